#pragma once
// One line of a SoloForest waypoint file: "PlotID,DDMM.SSssss,DDDMM.SSssss,Elevation,Description;<ICON = 9>,"
#include <optional>
#include <string>

#include "platform/field.h"

namespace tarnwick {

// Whole number text with at least `digits` digits, in the manner of a "00"
// picture: a minus sign in front of the padded digits for negative values.
std::string FormatPicture(long long value, int digits);

// Rounds half away from zero on the decimal form of a value (15 significant
// digits), as picture formatting does, so 2.5 stored as 2.4999... gives 3.
long long RoundDecimalHalfAway(double value);

// Decimal degrees as DDMM.SSssss: degrees and minutes in "00" pictures, then
// the seconds times 10000 in a "000000" picture. Seconds that round up to 60
// are not carried into the minutes, and a value between 0 and -1 loses its
// sign (its degrees are 0); both are kept on purpose, field devices read
// files written this way.
std::string FormatWaypointCoordinate(double decimalDegrees);
void AppendWaypointCoordinate(std::string& out, double decimalDegrees);

// The record without its line end. A Null Plot ID reads "<Null>"; a missing
// or Null elevation "0.0"; a missing or Null Stand ID leaves only the tag.
// Values go in as they stand: commas inside them are not escaped.
std::string FormatWaypointRecord(const platform::Value& plotId, double latitude, double longitude,
                                 const std::optional<platform::Value>& elevation,
                                 const std::optional<platform::Value>& standId);
// The same record appended to `out`; a null pointer stands for a missing field.
void AppendWaypointRecord(std::string& out, const platform::Value& plotId, double latitude, double longitude,
                          const platform::Value* elevation, const platform::Value* standId);

// True when a text value holds a comma or a line break, which a field
// computer reads as the end of the field or of the record.
bool HoldsRecordSeparator(const platform::Value& value);

}  // namespace tarnwick
