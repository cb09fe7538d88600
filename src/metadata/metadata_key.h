#pragma once
// Keys that address a metadata document, such as "mdContact[0]/rpIndName":
// element names from below the root, separated by "/", each with an optional
// index in square brackets counting repeated siblings from 0. A last step of
// the form "@name" reads an attribute.
#include <optional>
#include <string>
#include <vector>

namespace tarnwick::metadata {

struct KeyStep {
  std::string name;
  std::optional<int> index;  // none: every match when selecting, the first when writing
};

struct MetadataKey {
  std::vector<KeyStep> steps;
  std::optional<std::string> attribute;  // the "@name" ending
};

// Throws std::invalid_argument naming the key when it is malformed.
MetadataKey ParseMetadataKey(const std::string& key);

}  // namespace tarnwick::metadata
