#pragma once
// Point classes in each kind of store for the metadata routines to work on,
// and checks of what a document holds.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "metadata/property_set.h"
#include "platform/workspace.h"
#include "testkit/layers.h"
#include "testkit/temp_dir.h"

namespace tarnwick::metadata::test {

// Three plots in UTM zone 10N (NAD83) with a text and an integer field.
inline std::shared_ptr<platform::FeatureClass> CreatePlots(const std::string& workspacePath) {
  using platform::Field;
  using platform::FieldType;
  return testkit::MakeClass(
      workspacePath,
      testkit::ClassSpec("Plots", platform::GeometryType::Point, platform::SpatialReference::FromEpsg(26910),
                         {Field{"StandID", "", FieldType::String, 20}, Field{"PlotID", "", FieldType::Integer}}),
      {{"POINT (500000 5000000)", {std::string("S0"), std::int64_t{1}}},
       {"POINT (501000 5002000)", {std::string("S1"), std::int64_t{2}}},
       {"POINT (502000 5001000)", {std::string("S2"), std::int64_t{3}}}});
}

// The class opened afresh, as a later run would see it.
inline std::shared_ptr<platform::FeatureClass> Reopen(const std::string& workspacePath) {
  return platform::Workspace::Open(workspacePath)->OpenFeatureClass("Plots");
}

// Expects each key below `prefix` to read as its value.
inline void ExpectProperties(const MetadataPropertySet& set,
                             const std::vector<std::pair<std::string, std::string>>& expected,
                             const std::string& prefix = "") {
  for (const auto& [key, value] : expected) EXPECT_EQ(set.GetProperty(prefix + key), value) << prefix + key;
}

// Expects no element at each key below `prefix`.
inline void ExpectAbsent(const MetadataPropertySet& set, const std::vector<std::string>& keys,
                         const std::string& prefix = "") {
  for (const auto& key : keys) EXPECT_EQ(set.GetXml(prefix + key), "") << prefix + key;
}

}  // namespace tarnwick::metadata::test
