#include "shell/extension.h"

#include <cmath>
#include <limits>

#include "platform/errors.h"
#include "platform/field.h"
#include "presentation/error_handling.h"
#include "support/text_operations.h"

namespace tarnwick {

namespace {

constexpr const char* kModule = "..\\clsExtension.cls";

// The stream's value as a field value, so that the platform's conversions
// (text to number, rounding half to even) apply.
platform::Value AsValue(const StreamValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* number = std::get_if<std::int32_t>(&value)) return static_cast<std::int64_t>(*number);
  if (const auto* real = std::get_if<double>(&value)) return *real;
  return static_cast<std::int64_t>(std::get<bool>(value) ? -1 : 0);  // True is -1 as a number
}

void ReadInto(ValueStream& stream, std::string& member) {
  const StreamValue value = stream.Read();
  if (const auto* flag = std::get_if<bool>(&value)) {
    member = *flag ? "True" : "False";
  } else {
    member = platform::ValueToText(AsValue(value));
  }
}

void ReadInto(ValueStream& stream, std::int32_t& member) {
  const std::int64_t number = platform::ValueToLong(AsValue(stream.Read()));
  if (number < std::numeric_limits<std::int32_t>::min() || number > std::numeric_limits<std::int32_t>::max()) {
    throw platform::PlatformError(platform::kErrOverflow, "clsExtension", "Overflow");
  }
  member = static_cast<std::int32_t>(number);
}

void ReadInto(ValueStream& stream, double& member) { member = platform::ValueToDouble(AsValue(stream.Read())); }

void ReadInto(ValueStream& stream, bool& member) {
  const StreamValue value = stream.Read();
  if (const auto* flag = std::get_if<bool>(&value)) {
    member = *flag;
    return;
  }
  if (const auto* text = std::get_if<std::string>(&value)) {
    if (EqualsIgnoreCase(*text, "True")) {
      member = true;
      return;
    }
    if (EqualsIgnoreCase(*text, "False")) {
      member = false;
      return;
    }
  }
  member = platform::ValueToDouble(AsValue(value)) != 0;
}

double SpacingRepaired(double spacing) {
  spacing = std::fabs(spacing);
  return spacing == 0 ? 1.0 : spacing;
}

}  // namespace

void clsExtension::SetErrorHost(platform::host::Application* application,
                                const platform::host::MapDocument* document) {
  errorApplication_ = application;
  errorDocument_ = document;
}

void clsExtension::Startup() {
  if (DirectoryType.empty() || DirectoryPath.empty()) {
    DirectoryType = "Shapefile";
    DirectoryPath.clear();
    IsFeatureDataset = false;
    FeatDatasetName.clear();
  }
}

void clsExtension::Shutdown() {
  frmLayerIDReturn.reset();
  SpecifiedGeoTransform.reset();
  frmPlotLayoutReturn.reset();
  frmTransferStandIDReturn.reset();
}

void clsExtension::Load(ValueStream& stream) {
  try {
    ReadInto(stream, StandIDHistory);
    ReadInto(stream, XSpacingHistory);
    ReadInto(stream, YSpacingHistory);
    ReadInto(stream, PlotCountHistory);
    ReadInto(stream, SeparationUnitIndex);
    ReadInto(stream, BufferUnitIndex);
    ReadInto(stream, PlotOptionIndex);
    ReadInto(stream, SpacingRatioOptionIndex);
    ReadInto(stream, GridOrientation);
    ReadInto(stream, StandBufferDist);
    ReadInto(stream, SavePointsWhere);
    ReadInto(stream, GetStartFromPointFC);
    ReadInto(stream, ForceAnchorPoint);
    ReadInto(stream, AnchorPointOption);
    ReadInto(stream, UserSpacingOption);
    ReadInto(stream, XRatio);
    ReadInto(stream, YRatio);
    ReadInto(stream, XSpacing);
    ReadInto(stream, YSpacing);
    ReadInto(stream, DirectoryPath);
    ReadInto(stream, DirectoryType);
    ReadInto(stream, ExistingIDHistory);
    ReadInto(stream, OrientationHistory);
    ReadInto(stream, OrientationFromField);
    XSpacing = SpacingRepaired(XSpacing);
    YSpacing = SpacingRepaired(YSpacing);
  } catch (...) {
    HandleErrorAtEntryPoint("IPersistVariant_Load ", kModule, errorApplication_, errorDocument_);
  }
}

void clsExtension::Save(ValueStream& stream) const {
  try {
    for (const StreamValue& value : {StreamValue(StandIDHistory), StreamValue(XSpacingHistory),
                                     StreamValue(YSpacingHistory), StreamValue(PlotCountHistory),
                                     StreamValue(SeparationUnitIndex), StreamValue(BufferUnitIndex),
                                     StreamValue(PlotOptionIndex), StreamValue(SpacingRatioOptionIndex),
                                     StreamValue(GridOrientation), StreamValue(StandBufferDist),
                                     StreamValue(SavePointsWhere), StreamValue(GetStartFromPointFC),
                                     StreamValue(ForceAnchorPoint), StreamValue(AnchorPointOption),
                                     StreamValue(UserSpacingOption), StreamValue(XRatio), StreamValue(YRatio),
                                     StreamValue(XSpacing), StreamValue(YSpacing), StreamValue(DirectoryPath),
                                     StreamValue(DirectoryType), StreamValue(ExistingIDHistory),
                                     StreamValue(OrientationHistory), StreamValue(OrientationFromField)}) {
      stream.Write(value);
    }
  } catch (...) {
    HandleErrorAtEntryPoint("IPersistVariant_Save ", kModule, errorApplication_, errorDocument_);
  }
}

}  // namespace tarnwick
