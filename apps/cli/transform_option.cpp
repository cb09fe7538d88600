#include "transform_option.h"

#include <cstdio>
#include <filesystem>

#include "command_support.h"
#include "platform/errors.h"
#include "transforms/selection_sequence.h"
#include "transforms/transform_checks.h"

namespace tarnwick::cli {

namespace {

std::string GcsText(const SearchObject& object) {
  const auto sr = SpatialReferenceOf(object);
  if (sr.IsUnknown()) return "an unknown system";
  const auto gcs = sr.GeographicCoordinateSystem();
  return gcs.Name() + " (" + std::to_string(gcs.FactoryCode()) + ")";
}

void TellChosen(const platform::GeoTransformation& transformation, platform::TransformDirection direction) {
  std::fprintf(stderr, "Geographic transformation: %s, direction %s\n", DescribeTransformation(transformation).c_str(),
               DirectionName(direction));
}

ResolvedTransform ResolveNamed(const std::string& value, const SearchObject& object1, const SearchObject& object2) {
  const NamedTransformation named = Require(ResolveNamedTransformation(value, object1, object2));
  if (!named.needed) {
    std::fprintf(stderr, "No geographic transformation needed: both lie on %s; '%s' is not used.\n",
                 GcsText(object1).c_str(), value.c_str());
    return {};
  }
  TellChosen(*named.transformation, named.direction);
  return {named.transformation, named.direction, true};
}

}  // namespace

void TransformOption::AddTo(CLI::App& subcommand) {
  subcommand.add_option("--transform", value_,
                        "Geographic transformation between the two coordinate systems: auto (default), none, "
                        "or NAME[:reverse] (a name or code that `tarnwick transforms` lists)");
}

ResolvedTransform TransformOption::Resolve(CommandContext& context, const SearchObject& object1,
                                           const SearchObject& object2, const platform::Geometry* at) {
  ResolvedTransform resolved = Choose(context, object1, object2, at);
  // A transformation that cannot run here (its grid files are missing) is
  // refused now, before the tool writes anything.
  if (resolved.transformation) {
    if (auto refusal = CheckTransformationRuns(*resolved.transformation)) {
      refusal->text += "\n--transform NAME or --transform none chooses another; `tarnwick transforms` lists them.";
      Refuse(*refusal);
    }
  }
  return resolved;
}

ResolvedTransform TransformOption::Choose(CommandContext& context, const SearchObject& object1,
                                          const SearchObject& object2, const platform::Geometry* at) {
  if (value_ == "none") {
    const auto a = SpatialReferenceOf(object1);
    const auto b = SpatialReferenceOf(object2);
    if (!a.IsUnknown() && !b.IsUnknown() &&
        a.GeographicCoordinateSystem().FactoryCode() != b.GeographicCoordinateSystem().FactoryCode()) {
      std::fprintf(stderr, "No geographic transformation (--transform none) between %s and %s.\n",
                   GcsText(object1).c_str(), GcsText(object2).c_str());
    }
    return {};
  }
  if (value_ != "auto") return ResolveNamed(value_, object1, object2);

  const TransformationChoice choice = SelectGeoTransformation(context.application, context.document.FocusMap(),
                                                              defaults_, object1, object2, at);
  Require(CheckChoiceSpatialReferences(choice));
  if (choice.origin == TransformationChoice::Origin::NoneKnown) {
    std::fprintf(stderr, "No known geographic transformation between %s and %s: running without one.\n",
                 GcsText(object1).c_str(), GcsText(object2).c_str());
  }
  if (!choice.needed || !choice.transformation) return {};
  TellChosen(*choice.transformation, choice.direction);
  return {choice.transformation, choice.direction, true};
}

SearchObject ParseLayerOrSpatialReference(const std::string& text) {
  std::error_code ec;
  const std::string path = text.substr(0, text.find('|'));
  // A class inside a store ("x.gpkg/Plots") names an existing store.
  const bool looksLikeData =
      std::filesystem::exists(path, ec) ||
      (path.find('/') != std::string::npos && std::filesystem::exists(platform::SplitClassPath(path).workspace, ec));
  if (looksLikeData) {
    try {
      return platform::OpenFeatureLayer(text);
    } catch (const platform::PlatformError& e) {
      throw UsageError(e.what());
    }
  }
  try {
    return platform::SpatialReference::FromUserInput(text);
  } catch (const platform::PlatformError&) {
    throw UsageError("'" + text + "' is neither an existing layer nor a coordinate system (e.g. EPSG:4267).");
  }
}

platform::SpatialReference SpatialReferenceOf(const SearchObject& object) {
  if (const auto* layer = std::get_if<platform::FeatureLayer>(&object)) {
    return layer->featureClass ? layer->featureClass->GetSpatialReference() : platform::SpatialReference();
  }
  if (const auto* sr = std::get_if<platform::SpatialReference>(&object)) return *sr;
  return {};
}

}  // namespace tarnwick::cli
