#include "metadata/contacts.h"

#include <array>
#include <utility>

#include "metadata/code_tables.h"
#include "metadata/document_io.h"
#include "metadata/element_index.h"
#include "metadata/routine_guard.h"
#include "support/host_operations.h"

namespace tarnwick::metadata {

namespace {

struct KindInfo {
  const char* basePath;
  const char* presentStatus;
};

KindInfo InfoOf(ContactKind kind) {
  switch (kind) {
    case ContactKind::Metadata: return {"mdContact", "Metadata Contact Already Present"};
    case ContactKind::Citation: return {"dataIdInfo/idCitation/citRespParty", "Citation Contact Already Present"};
    case ContactKind::Resource: return {"dataIdInfo/idPoC", "Resource Contact Already Present"};
  }
  return {"", ""};
}

// The nine texts after the name, with their paths below the contact, in
// the order they are written.
std::array<std::pair<const char*, const std::string*>, 9> OptionalTexts(const ContactRecord& c) {
  return {{{"/rpOrgName", &c.organisation},
           {"/rpPosName", &c.position},
           {"/rpCntInfo/cntPhone/voiceNum", &c.telephone},
           {"/rpCntInfo/cntAddress/delPoint", &c.streetAddress},
           {"/rpCntInfo/cntAddress/city", &c.city},
           {"/rpCntInfo/cntAddress/adminArea", &c.state},
           {"/rpCntInfo/cntAddress/postCode", &c.postalCode},
           {"/rpCntInfo/cntAddress/country", &c.country},
           {"/rpCntInfo/cntAddress/eMailAdd", &c.email}}};
}

bool IsBlank(const std::string& text) { return text.find_first_not_of(' ') == std::string::npos; }

std::string StoredAddressType(int index) { return index == kAddressTypeOmitted ? "" : AddressTypeText(index); }

bool SameContactAt(const MetadataPropertySet& set, const std::string& element, const ContactRecord& contact) {
  if (set.GetProperty(element + "/rpIndName") != contact.individualName) return false;
  for (const auto& [path, text] : OptionalTexts(contact)) {
    if (set.GetProperty(element + path) != *text) return false;
  }
  return set.GetProperty(element + "/role/RoleCd/@value") == ContactRoleCode(contact.roleIndex) &&
         set.GetProperty(element + "/rpCntInfo/cntAddress/@addressType") ==
             StoredAddressType(contact.addressTypeIndex);
}

void WriteContactTexts(MetadataPropertySet& set, const std::string& element, const ContactRecord& contact) {
  set.SetPropertyX(element + "/rpIndName", contact.individualName);
  for (const auto& [path, text] : OptionalTexts(contact)) {
    if (!IsBlank(*text)) set.SetPropertyX(element + path, *text);
  }
}

void WriteRoleAndAddressType(MetadataPropertySet& set, const std::string& element, const ContactRecord& contact) {
  set.SetPropertyX(element + "/role/RoleCd", "");
  set.SetAttribute(element + "/role/RoleCd", "value", ContactRoleCode(contact.roleIndex));
  if (contact.addressTypeIndex != kAddressTypeOmitted) {
    set.SetAttribute(element + "/rpCntInfo/cntAddress", "addressType", AddressTypeText(contact.addressTypeIndex));
  }
}

ContactRecord WithUserName(ContactRecord contact, bool useUserName) {
  if (useUserName) contact.individualName = ReturnUserName();
  return contact;
}

std::string AddContact(const char* routine, platform::FeatureClass& dataset, ContactKind kind,
                       const ContactRecord& contact, bool useUserName, bool skipIfPresent) {
  return GuardedOr<std::string>(routine, "Failed", [&] {
    const ContactRecord resolved = WithUserName(contact, useUserName);
    return EditMetadata(dataset, [&](MetadataPropertySet& set) {
      return AddContactToDocument(set, kind, resolved, skipIfPresent);
    });
  });
}

}  // namespace

std::string AddContactToDocument(MetadataPropertySet& set, ContactKind kind, const ContactRecord& contact,
                                 bool booSkipIfPresent) {
  const KindInfo info = InfoOf(kind);
  const std::string base = info.basePath;
  const int n = LastElementIndex(set, base) + 1;
  if (booSkipIfPresent) {
    for (int i = 0; i < n; ++i) {
      if (SameContactAt(set, base + "[" + std::to_string(i) + "]", contact)) return info.presentStatus;
    }
  }
  const std::string element = base + "[" + std::to_string(n) + "]";
  WriteContactTexts(set, element, contact);
  WriteRoleAndAddressType(set, element, contact);
  return "";
}

void AddLineageStepToDocument(MetadataPropertySet& set, const LineageProcessStep& step) {
  const std::string base = "dqInfo/dataLineage/prcStep";
  const std::string element = base + "[" + std::to_string(LastElementIndex(set, base) + 1) + "]";
  const std::string processor = element + "/stepProc";
  for (const char* path : {"/stepDesc", "/stepDateTm"}) set.DeleteProperty(element + path);
  set.DeleteProperty(processor + "/rpIndName");
  for (const auto& [path, text] : OptionalTexts(step.contact)) set.DeleteProperty(processor + path);
  set.DeleteProperty(processor + "/role/RoleCd");
  set.DeleteProperty(processor + "/displayName");

  set.SetPropertyX(element + "/stepDesc", step.description);
  set.SetPropertyX(element + "/stepDateTm", step.date.ElementText());
  WriteContactTexts(set, processor, step.contact);
  set.SetPropertyX(processor + "/displayName", step.contact.individualName);
  WriteRoleAndAddressType(set, processor, step.contact);
}

std::string AddMetadataContact(platform::FeatureClass& dataset, const ContactRecord& contact, bool booUseUserName,
                               bool booSkipIfPresent) {
  return AddContact("AddMetadataContact", dataset, ContactKind::Metadata, contact, booUseUserName, booSkipIfPresent);
}

std::string AddCitationContact(platform::FeatureClass& dataset, const ContactRecord& contact, bool booUseUserName,
                               bool booSkipIfPresent) {
  return AddContact("AddCitationContact", dataset, ContactKind::Citation, contact, booUseUserName, booSkipIfPresent);
}

std::string AddResourceContact(platform::FeatureClass& dataset, const ContactRecord& contact, bool booUseUserName,
                               bool booSkipIfPresent) {
  return AddContact("AddResourceContact", dataset, ContactKind::Resource, contact, booUseUserName, booSkipIfPresent);
}

std::string AddLineageProcessStep(platform::FeatureClass& dataset, const LineageProcessStep& step) {
  return GuardedOr<std::string>("AddLineageProcessStep", "Failed", [&] {
    LineageProcessStep resolved = step;
    resolved.contact = WithUserName(step.contact, step.useUserName);
    return EditMetadata(dataset, [&](MetadataPropertySet& set) {
      AddLineageStepToDocument(set, resolved);
      return std::string();
    });
  });
}

}  // namespace tarnwick::metadata
