// tarnwick transforms: the geographic transformations that join the
// coordinate systems of two layers (or systems), ranked by how near their
// area of use lies to the data and how accurate they are.
#include <cstdio>
#include <memory>
#include <string>

#include <fmt/core.h>

#include "commands.h"
#include "presentation/error_handling.h"
#include "transform_option.h"
#include "transforms/transform_candidates.h"
#include "transforms/transform_checks.h"

namespace tarnwick::cli {

namespace {

struct TransformsOptions {
  std::string first;
  std::string second;
  std::vector<double> at;  // X,Y in the first one's coordinate system
};

std::string GcsLine(const SearchObject& object) {
  const auto sr = SpatialReferenceOf(object);
  const auto gcs = sr.GeographicCoordinateSystem();
  return fmt::format("{} on {} ({})", DisplayName(object), gcs.Name(), gcs.FactoryCode());
}

std::string Number(double value) { return fmt::format("{:.6g}", value); }

void PrintRanking(const TransformRanking& ranking) {
  if (ranking.measured) {
    std::printf("Ranked at longitude %.6f, latitude %.6f (measure = distance in km x accuracy; "
                "10000 when the catalogue does not know it)\n\n",
                ranking.lon, ranking.lat);
  } else {
    std::printf("Not ranked: %s\n\n", ranking.entries.size() < 2 ? "a single candidate"
                                                                 : "no location to rank at (give --at X,Y)");
  }
  std::printf("%4s  %-58s  %-12s  %8s  %13s  %10s  %s\n", "Rank", "Name", "Code", "Accuracy", "Distance (km)",
              "Measure", "Area of use");
  int rank = 0;
  for (const auto& e : ranking.entries) {
    const auto& t = e.transformation;
    const std::string code = t.authority + ":" + std::to_string(t.code);
    const bool known = e.row != nullptr;
    const std::string accuracy = known ? e.row->accuracy : "-";
    const std::string distance = ranking.measured && known ? fmt::format("{:.1f}", e.distanceKm) : "-";
    const std::string measure = ranking.measured ? Number(e.measure) : "-";
    const std::string area = known ? e.row->area : "(not in the catalogue)";
    std::printf("%4d  %-58s  %-12s  %8s  %13s  %10s  %s\n", ++rank, t.name.c_str(), code.c_str(), accuracy.c_str(),
                distance.c_str(), measure.c_str(), area.c_str());
  }
}

int RunTransforms(const TransformsOptions& options, CommandContext& context) {
  const SearchObject first = ParseLayerOrSpatialReference(options.first);
  const SearchObject second = ParseLayerOrSpatialReference(options.second);
  try {
    // Ranked at the given point, else at the first (or else the second) layer's data.
    std::optional<platform::Geometry> point;
    if (options.at.size() == 2) {
      point = platform::Geometry::MakePoint(options.at[0], options.at[1], SpatialReferenceOf(first));
    }
    const TransformCandidates found =
        FindTransformCandidates(context.application, first, second, point ? &*point : nullptr);
    if (found.failed) throw UsageError("No search: " + found.failure);
    std::printf("From: %s\nTo:   %s\n", GcsLine(first).c_str(), GcsLine(second).c_str());
    if (found.sameGcs) {
      std::printf("Both lie on the same geographic coordinate system: no transformation is needed.\n");
      return kExitSuccess;
    }
    if (found.unranked.empty()) {
      std::printf("%s\n", found.message.c_str());
      return kExitSuccess;
    }
    const std::size_t count = found.unranked.size();
    std::printf("%zu candidate%s\n", count, count == 1 ? "" : "s");
    PrintRanking(found.ranked);
    return kExitSuccess;
  } catch (const UsageError&) {
    throw;
  } catch (...) {
    const ErrorLog log = HandleErrorAtEntryPoint("RunTransforms", "TransformsCommand", &context.application,
                                                 &context.document);
    std::fprintf(stderr, "tarnwick transforms failed%s\n",
                 log.path.empty() ? "" : ("; error log: " + log.path).c_str());
    return kExitRunFailed;
  }
}

}  // namespace

void RegisterTransforms(CLI::App& app, CommandAction& action) {
  auto options = std::make_shared<TransformsOptions>();
  auto* sub = app.add_subcommand(
      "transforms", "List the geographic transformations between two layers or coordinate systems, ranked");
  sub->add_option("FIRST", options->first, "Layer (PATH or PATH|layername=NAME) or coordinate system (EPSG:4267)")
      ->required();
  sub->add_option("SECOND", options->second, "Layer or coordinate system")->required();
  sub->add_option("--at", options->at, "Rank at X,Y, given in the first one's coordinate system")
      ->delimiter(',')
      ->expected(2);
  sub->callback([options, &action] {
    action = [options](CommandContext& context) { return RunTransforms(*options, context); };
  });
}

}  // namespace tarnwick::cli
