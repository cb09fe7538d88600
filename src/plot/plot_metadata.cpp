#include "plot/plot_metadata.h"

#include <filesystem>
#include <vector>

#include "metadata/metadata_functions.h"
#include "platform/workspace.h"
#include "plot/plot_module.h"
#include "presentation/error_handling.h"

namespace tarnwick {

namespace {

metadata::DateTime ToDateTime(LocalTime when) {
  using namespace std::chrono;
  const local_days day = floor<days>(when);
  const year_month_day ymd{day};
  const hh_mm_ss<seconds> time{when - day};
  return {static_cast<int>(ymd.year()), static_cast<int>(static_cast<unsigned>(ymd.month())),
          static_cast<int>(static_cast<unsigned>(ymd.day())), static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count())};
}

metadata::ContactRecord Contact(int role) {
  metadata::ContactRecord contact;
  contact.roleIndex = role;
  contact.addressTypeIndex = 4;
  return contact;
}

}  // namespace

std::string PlotToolSource() {
  std::error_code ec;
  const auto executable = std::filesystem::read_symlink("/proc/self/exe", ec);
  const std::string folder = ec ? std::filesystem::current_path(ec).string() : executable.parent_path().string();
  return "Plot Layout tool in Tarnwick Extension 'Tarnwick Tools' [" + folder + "/Tarnwick.dll";
}

void SetPlotLayoutMetadata(platform::FeatureClass& featureClass, const PlotMetadataRequest& request,
                           platform::host::Application& application, const platform::host::MapDocument* document) {
  Guarded("SetPlotLayoutMetadata", kPlotModule, [&] {
    const metadata::DateTime now = ToDateTime(request.now);
    metadata::ReturnMetadataPropertySet(featureClass);
    metadata::SynchronizeMetadata(featureClass);

    if (request.isNewFeatureClass) {
      metadata::SetMetadataAbstract(featureClass,
                                    "This feature class contains an array of plot locations distributed over stand "
                                    "polygons from '" + request.standLayerName + "'.");
      const std::vector<std::string> keywords{"Stand", "Plot Layout", request.standLayerName, featureClass.Name(),
                                              "Tarnwick, LLC"};
      metadata::MetadataKeywords lists;
      lists.theme = keywords;
      lists.search = keywords;
      lists.descriptive = keywords;
      lists.stratum = std::vector<std::string>{};
      lists.themeOlder = std::vector<std::string>{};
      lists.place = std::vector<std::string>{};
      lists.temporal = std::vector<std::string>{};
      metadata::SetMetadataKeywords(featureClass, lists);
    }

    metadata::LineageProcessStep step;
    step.description = request.purposeText;
    step.date = now;
    step.contact = Contact(9);
    step.useUserName = true;
    metadata::AddLineageProcessStep(featureClass, step);

    metadata::GeoprocessingEvent event;
    event.eventText = request.parameterText;
    event.toolSource = PlotToolSource();
    event.date = now;
    event.name = "GeneratePlotLayout";
    event.exportFlag = true;
    metadata::AddGeoprocessingEvent(featureClass, event);

    if (request.isNewFeatureClass) {
      for (int role : {7, 9, 11}) metadata::AddMetadataContact(featureClass, Contact(role), true, true);
      for (int role : {7, 9, 6}) metadata::AddCitationContact(featureClass, Contact(role), true, true);
      for (int role : {7, 9, 2}) metadata::AddResourceContact(featureClass, Contact(role), true, true);
      metadata::SetCitationDates(featureClass, now, now, metadata::DateTime{});
      metadata::SetResourceStatus(featureClass, 1);
      metadata::SetResourceMaintenance(featureClass, 9);
    }

    if (request.describeStandField) {
      metadata::AttributeFieldMetadata field;
      field.fieldName = request.outputStandFieldName;
      field.definition = "ID Value of stand that contains this plot point, extracted from Attribute Field [" +
                         request.standFieldName + "] in feature class '" + request.standLayerName + "'.";
      field.definitionSource = request.standLayerName;
      field.units = "Stand ID Values";
      field.clearFirst = true;
      metadata::SetAttributeFieldMetadata(featureClass, field, application);
    }
    if (request.describePlotField) {
      metadata::AttributeFieldMetadata field;
      field.fieldName = request.outputPlotFieldName;
      field.definition = "Plot ID Value of this point.";
      field.definitionSource = "Plot Layout Tool from 'Tarnwick.dll'";
      field.units = "Plot ID Values";
      field.clearFirst = true;
      metadata::SetAttributeFieldMetadata(featureClass, field, application);
    }

    metadata::SetFormatVersion(featureClass, "", true, document, application);
    metadata::SynchronizeMetadata(featureClass);
  });
}

}  // namespace tarnwick
