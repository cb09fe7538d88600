#include "transform_option.h"

#include <cstdio>
#include <filesystem>

#include "platform/errors.h"
#include "platform/predefined_transformations.h"
#include "transforms/selection_sequence.h"
#include "transforms/transform_search.h"

namespace tarnwick::cli {

namespace {

const char* DirectionText(platform::TransformDirection direction) {
  return direction == platform::TransformDirection::Forward ? "FORWARD" : "REVERSE";
}

std::string Describe(const platform::GeoTransformation& t) {
  return t.name + " (" + t.authority + ":" + std::to_string(t.code) + ")";
}

std::string GcsText(const SearchObject& object) {
  const auto sr = SpatialReferenceOf(object);
  if (sr.IsUnknown()) return "an unknown system";
  const auto gcs = sr.GeographicCoordinateSystem();
  return gcs.Name() + " (" + std::to_string(gcs.FactoryCode()) + ")";
}

ResolvedTransform ResolveNamed(const std::string& value, const SearchObject& object1, const SearchObject& object2) {
  std::string name = value;
  std::optional<platform::TransformDirection> asked;
  if (const auto colon = value.rfind(':'); colon != std::string::npos) {
    const std::string suffix = value.substr(colon + 1);
    if (suffix == "reverse" || suffix == "forward") {
      asked = suffix == "reverse" ? platform::TransformDirection::Reverse : platform::TransformDirection::Forward;
      name = value.substr(0, colon);
    }
  }
  const auto transformation = platform::FindPredefinedGeoTransformation(name);
  if (!transformation) {
    throw UsageError("--transform: no geographic transformation is named '" + name +
                     "'; `tarnwick transforms` lists the candidates between two systems.");
  }
  ResolvedTransform resolved;
  bool error = false;
  std::string message;
  std::string name1 = DisplayName(object1);
  std::string name2 = DisplayName(object2);
  ReturnFromToTransform(object1, object2, &*transformation, resolved.needed, resolved.direction, error, message,
                        name1, name2);
  if (error) throw UsageError(message);
  if (!resolved.needed) {
    std::fprintf(stderr, "No geographic transformation needed: both lie on %s; '%s' is not used.\n",
                 GcsText(object1).c_str(), transformation->name.c_str());
    return resolved;
  }
  if (asked && *asked != resolved.direction) {
    throw UsageError("--transform: " + Describe(*transformation) + " joins these systems only in the " +
                     DirectionText(resolved.direction) + " direction, not " + DirectionText(*asked) + ".");
  }
  resolved.transformation = transformation;
  std::fprintf(stderr, "Geographic transformation: %s, direction %s\n", Describe(*transformation).c_str(),
               DirectionText(resolved.direction));
  return resolved;
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
    try {
      platform::CheckTransformationUsable(*resolved.transformation);
    } catch (const platform::PlatformError& e) {
      throw UsageError(std::string(e.what()) +
                       ".\nInstall the grid files, or choose another transformation with --transform NAME "
                       "(`tarnwick transforms` lists them) or --transform none.");
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

  // The search ranks its candidates at object 1's data or at a point; with
  // a bare spatial reference as object 1 it needs a point. The ranking does
  // not change which candidate is taken, so any place on the data will do:
  // the middle of object 2's layer, else the origin of object 1's system.
  std::optional<platform::Geometry> place;
  if (at == nullptr && !std::holds_alternative<platform::FeatureLayer>(object1)) {
    const auto* layer2 = std::get_if<platform::FeatureLayer>(&object2);
    if (layer2 && layer2->featureClass) {
      const platform::Envelope e = layer2->featureClass->Extent();
      place = platform::Geometry::MakePoint((e.xMin + e.xMax) / 2, (e.yMin + e.yMax) / 2,
                                            layer2->featureClass->GetSpatialReference());
    } else if (const auto sr = SpatialReferenceOf(object1); !sr.IsUnknown()) {
      place = platform::Geometry::MakePoint(0, 0, sr.GeographicCoordinateSystem());
    }
    if (place) at = &*place;
  }
  const TransformationChoice choice = SelectGeoTransformation(context.application, context.document.FocusMap(),
                                                              defaults_, object1, object2, at);
  using Origin = TransformationChoice::Origin;
  switch (choice.origin) {
    case Origin::InvalidSpatialReference:
      throw UsageError("Invalid Spatial Reference:\n\n  --> " + choice.message);
    case Origin::SameGcs:
      return {};
    case Origin::NoneKnown:
      std::fprintf(stderr, "No known geographic transformation between %s and %s: running without one.\n",
                   GcsText(object1).c_str(), GcsText(object2).c_str());
      return {};
    case Origin::Memory:
    case Origin::Search:
      break;
  }
  if (choice.transformation && choice.needed) {
    std::fprintf(stderr, "Geographic transformation: %s, direction %s\n", Describe(*choice.transformation).c_str(),
                 DirectionText(choice.direction));
  }
  return {choice.needed ? choice.transformation : std::nullopt, choice.direction, choice.needed};
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

std::string DisplayName(const SearchObject& object) {
  if (const auto* layer = std::get_if<platform::FeatureLayer>(&object)) return layer->name;
  if (const auto* sr = std::get_if<platform::SpatialReference>(&object)) return sr->Name();
  return "";
}

}  // namespace tarnwick::cli
