#pragma once
// A metadata document held as an XML tree under a "metadata" root and edited
// by keys (see metadata_key.h).
//
// Values: an element without child elements has its text as its value; an
// element with child elements has its inner XML, so an element that holds
// anything at all never reads as empty. A missing element reads as "".
#include <memory>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "metadata/date_time.h"

namespace tarnwick::metadata {

struct PropertyValue {
  std::string text;
  bool isObject = false;  // embedded binary data (a thumbnail and the like)
};

class MetadataPropertySet {
 public:
  // A new, empty document (IsNew is true until InitExisting).
  MetadataPropertySet();
  // A stored document. Throws std::invalid_argument with the parser's reason
  // and offset when the text is not well-formed XML or has no root element.
  static MetadataPropertySet FromXml(const std::string& xml);

  MetadataPropertySet(MetadataPropertySet&&) noexcept = default;
  MetadataPropertySet& operator=(MetadataPropertySet&&) noexcept = default;

  // Number of entries GetAllProperties lists.
  int Count() const;
  // The first matching element's value, or an attribute's for "key/@name".
  std::string GetProperty(const std::string& key) const;
  // Every element without child elements, and every attribute ("key/@name"),
  // in document order, named by keys that GetProperty accepts.
  void GetAllProperties(std::vector<std::string>& names, std::vector<PropertyValue>& values) const;

  // Sets the text of the element, creating it and its parents as needed; an
  // index beyond the last sibling appends siblings up to it.
  void SetPropertyX(const std::string& key, const std::string& value);
  void SetAttribute(const std::string& key, const std::string& attribute, const std::string& value);
  // Removes every element the key matches (an unindexed step matches all).
  void DeleteProperty(const std::string& key);
  // The whole document for "", otherwise the first matching element's XML.
  std::string GetXml(const std::string& key = "") const;

  bool IsNew() const { return isNew_; }
  // Gives a new document its root and its creation stamp.
  void InitExisting(const DateTime& now);

  // The tree itself, for bulk edits such as synchronising.
  pugi::xml_node Root();

 private:
  std::unique_ptr<pugi::xml_document> doc_;
  bool isNew_ = true;
};

}  // namespace tarnwick::metadata
