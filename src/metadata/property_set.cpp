#include "metadata/property_set.h"

#include <sstream>
#include <stdexcept>

#include "metadata/metadata_key.h"

namespace tarnwick::metadata {

namespace {

constexpr const char* kRootName = "metadata";

std::vector<pugi::xml_node> NamedChildren(pugi::xml_node parent, const std::string& name) {
  std::vector<pugi::xml_node> found;
  for (pugi::xml_node child : parent.children(name.c_str())) found.push_back(child);
  return found;
}

// Every element the steps reach; an unindexed step fans out to all matches.
std::vector<pugi::xml_node> Select(pugi::xml_node root, const MetadataKey& key) {
  std::vector<pugi::xml_node> current;
  if (root) current.push_back(root);
  for (const KeyStep& step : key.steps) {
    std::vector<pugi::xml_node> next;
    for (pugi::xml_node node : current) {
      auto children = NamedChildren(node, step.name);
      if (!step.index) {
        next.insert(next.end(), children.begin(), children.end());
      } else if (*step.index < static_cast<int>(children.size())) {
        next.push_back(children[*step.index]);
      }
    }
    current = std::move(next);
  }
  return current;
}

// The element the key names, created with its parents (and any missing
// earlier siblings) when absent.
pugi::xml_node Reach(pugi::xml_node root, const MetadataKey& key) {
  pugi::xml_node node = root;
  for (const KeyStep& step : key.steps) {
    const int wanted = step.index.value_or(0);
    auto children = NamedChildren(node, step.name);
    while (static_cast<int>(children.size()) <= wanted) children.push_back(node.append_child(step.name.c_str()));
    node = children[wanted];
  }
  return node;
}

bool HasElementChildren(pugi::xml_node node) {
  for (pugi::xml_node child : node.children()) {
    if (child.type() == pugi::node_element) return true;
  }
  return false;
}

std::string Serialize(pugi::xml_node node, unsigned flags) {
  std::ostringstream out;
  node.print(out, "  ", flags, pugi::encoding_utf8);
  return out.str();
}

std::string ValueOf(pugi::xml_node node) {
  if (!HasElementChildren(node)) return node.text().get();
  std::string inner;
  for (pugi::xml_node child : node.children()) inner += Serialize(child, pugi::format_raw);
  return inner;
}

// Binary content the host marks with a property type, such as a thumbnail.
bool IsObjectElement(pugi::xml_node node) {
  const std::string type = node.attribute("EsriPropertyType").value();
  return type == "PictureX" || type == "Picture" || type == "Binary";
}

void List(pugi::xml_node parent, const std::string& prefix, std::vector<std::string>& names,
          std::vector<PropertyValue>& values) {
  for (pugi::xml_node child : parent.children()) {
    if (child.type() != pugi::node_element) continue;
    const std::string name = child.name();
    int index = 0;
    int count = 0;
    for (pugi::xml_node sibling : parent.children(name.c_str())) {
      if (sibling == child) index = count;
      ++count;
    }
    const std::string key = prefix + name + (count > 1 ? "[" + std::to_string(index) + "]" : "");
    if (IsObjectElement(child)) {
      names.push_back(key);
      values.push_back({"", true});
      continue;
    }
    const bool leaf = !HasElementChildren(child);
    if (leaf) {
      names.push_back(key);
      values.push_back({child.text().get(), false});
    }
    for (pugi::xml_attribute attribute : child.attributes()) {
      names.push_back(key + "/@" + attribute.name());
      values.push_back({attribute.value(), false});
    }
    if (!leaf) List(child, key + "/", names, values);
  }
}

}  // namespace

MetadataPropertySet::MetadataPropertySet() : doc_(std::make_unique<pugi::xml_document>()) {}

MetadataPropertySet MetadataPropertySet::FromXml(const std::string& xml) {
  MetadataPropertySet set;
  const pugi::xml_parse_result result =
      set.doc_->load_buffer(xml.data(), xml.size(), pugi::parse_default | pugi::parse_declaration, pugi::encoding_utf8);
  if (!result) {
    throw std::invalid_argument(std::string(result.description()) + " at offset " + std::to_string(result.offset));
  }
  if (!set.doc_->document_element()) throw std::invalid_argument("the document has no root element");
  set.isNew_ = false;
  return set;
}

pugi::xml_node MetadataPropertySet::Root() {
  pugi::xml_node root = doc_->document_element();
  if (!root) root = doc_->append_child(kRootName);
  return root;
}

int MetadataPropertySet::Count() const {
  std::vector<std::string> names;
  std::vector<PropertyValue> values;
  GetAllProperties(names, values);
  return static_cast<int>(names.size());
}

std::string MetadataPropertySet::GetProperty(const std::string& key) const {
  const MetadataKey parsed = ParseMetadataKey(key);
  for (pugi::xml_node node : Select(doc_->document_element(), parsed)) {
    if (!parsed.attribute) return ValueOf(node);
    if (pugi::xml_attribute attribute = node.attribute(parsed.attribute->c_str())) return attribute.value();
  }
  return "";
}

void MetadataPropertySet::GetAllProperties(std::vector<std::string>& names, std::vector<PropertyValue>& values) const {
  names.clear();
  values.clear();
  if (pugi::xml_node root = doc_->document_element()) List(root, "", names, values);
}

void MetadataPropertySet::SetPropertyX(const std::string& key, const std::string& value) {
  const MetadataKey parsed = ParseMetadataKey(key);
  pugi::xml_node node = Reach(Root(), parsed);
  if (parsed.attribute) {
    pugi::xml_attribute attribute = node.attribute(parsed.attribute->c_str());
    if (!attribute) attribute = node.append_attribute(parsed.attribute->c_str());
    attribute.set_value(value.c_str());
    return;
  }
  for (pugi::xml_node child = node.first_child(); child;) {
    pugi::xml_node next = child.next_sibling();
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) node.remove_child(child);
    child = next;
  }
  if (!value.empty()) node.prepend_child(pugi::node_pcdata).set_value(value.c_str());
}

void MetadataPropertySet::SetAttribute(const std::string& key, const std::string& attribute, const std::string& value) {
  pugi::xml_node node = Reach(Root(), ParseMetadataKey(key));
  pugi::xml_attribute existing = node.attribute(attribute.c_str());
  if (!existing) existing = node.append_attribute(attribute.c_str());
  existing.set_value(value.c_str());
}

void MetadataPropertySet::DeleteProperty(const std::string& key) {
  const MetadataKey parsed = ParseMetadataKey(key);
  for (pugi::xml_node node : Select(doc_->document_element(), parsed)) {
    if (parsed.attribute) {
      node.remove_attribute(parsed.attribute->c_str());
    } else {
      node.parent().remove_child(node);
    }
  }
}

std::string MetadataPropertySet::GetXml(const std::string& key) const {
  if (key.empty()) return Serialize(*doc_, pugi::format_indent);
  const auto nodes = Select(doc_->document_element(), ParseMetadataKey(key));
  return nodes.empty() ? "" : Serialize(nodes.front(), pugi::format_indent);
}

void MetadataPropertySet::InitExisting(const DateTime& now) {
  if (!doc_->first_child() || doc_->first_child().type() != pugi::node_declaration) {
    pugi::xml_node declaration = doc_->prepend_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
  }
  pugi::xml_node root = Root();
  if (!root.attribute("xml:lang")) root.append_attribute("xml:lang") = "en";
  SetPropertyX("Esri/CreaDate", now.CompactDate());
  SetPropertyX("Esri/CreaTime", now.CompactTime() + "00");
  SetPropertyX("Esri/ArcGISFormat", "1.0");
  SetPropertyX("Esri/SyncOnce", "TRUE");
  isNew_ = false;
}

}  // namespace tarnwick::metadata
