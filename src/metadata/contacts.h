#pragma once
// Contacts of the metadata document (metadata, citation and resource
// contacts) and the lineage process step, which carries a contact too.
#include <string>

#include "metadata/date_time.h"
#include "metadata/property_set.h"

namespace tarnwick::platform {
class FeatureClass;
}

namespace tarnwick::metadata {

struct ContactRecord {
  std::string individualName;
  std::string organisation;
  std::string position;
  std::string telephone;
  std::string streetAddress;
  std::string city;
  std::string state;
  std::string postalCode;
  std::string country;
  std::string email;
  int roleIndex = 0;         // ContactRoleCode
  int addressTypeIndex = 4;  // AddressTypeText; 4 writes no address type
};

// Where a contact goes and what the present-check answers.
enum class ContactKind { Metadata, Citation, Resource };

// Adds the contact under its base path at the next free index. With
// booUseUserName the logged-in user's name replaces individualName. With
// booSkipIfPresent a contact equal in all ten texts, role and address type
// leaves the document unchanged and answers "... Contact Already Present".
std::string AddMetadataContact(platform::FeatureClass& dataset, const ContactRecord& contact, bool booUseUserName,
                               bool booSkipIfPresent);
std::string AddCitationContact(platform::FeatureClass& dataset, const ContactRecord& contact, bool booUseUserName,
                               bool booSkipIfPresent);
std::string AddResourceContact(platform::FeatureClass& dataset, const ContactRecord& contact, bool booUseUserName,
                               bool booSkipIfPresent);

struct LineageProcessStep {
  std::string description;
  DateTime date;
  ContactRecord contact;  // the processor
  bool useUserName = false;
};

// Adds a "dqInfo/dataLineage/prcStep" at the next free index.
std::string AddLineageProcessStep(platform::FeatureClass& dataset, const LineageProcessStep& step);

// Document-level forms of the above, used by the routines and by tests.
std::string AddContactToDocument(MetadataPropertySet& propertySet, ContactKind kind, const ContactRecord& contact,
                                 bool booSkipIfPresent);
void AddLineageStepToDocument(MetadataPropertySet& propertySet, const LineageProcessStep& step);

}  // namespace tarnwick::metadata
