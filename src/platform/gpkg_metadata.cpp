#include "platform/internal/gpkg_metadata.h"

#include <cpl_error.h>
#include <ogrsf_frmts.h>

#include "platform/internal/ogr_errors.h"

namespace tarnwick::platform::internal {

namespace {

constexpr const char* kSource = "MetadataStore";
// The kind of document the tools keep (the metadata editor's own format).
constexpr const char* kStandard = "http://www.esri.com/metadata/arcgis";

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) {
    quoted += c;
    if (c == '\'') quoted += '\'';
  }
  return quoted + "'";
}

// Runs a statement that returns nothing.
void Execute(GDALDataset& dataset, const std::string& sql) {
  CPLErrorReset();
  if (OGRLayer* result = dataset.ExecuteSQL(sql.c_str(), nullptr, nullptr)) dataset.ReleaseResultSet(result);
  if (CPLGetLastErrorType() >= CE_Failure) ThrowGdalError(kSource, "Cannot store the metadata document");
}

// The first column of the first row, if any.
std::optional<std::string> QueryText(GDALDataset& dataset, const std::string& sql) {
  CPLErrorReset();
  OGRLayer* result = dataset.ExecuteSQL(sql.c_str(), nullptr, nullptr);
  if (result == nullptr) return std::nullopt;
  std::optional<std::string> text;
  if (OGRFeatureUniquePtr row{result->GetNextFeature()}; row && row->IsFieldSetAndNotNull(0)) {
    text = row->GetFieldAsString(0);
  }
  dataset.ReleaseResultSet(result);
  return text;
}

bool HasMetadataTables(GDALDataset& dataset) {
  return QueryText(dataset,
                   "SELECT COUNT(*) FROM sqlite_master WHERE name IN ('gpkg_metadata', 'gpkg_metadata_reference')")
             .value_or("0") == "2";
}

// The tables and their registration, as the GeoPackage metadata extension
// defines them.
void CreateMetadataTables(GDALDataset& dataset) {
  Execute(dataset,
          "CREATE TABLE IF NOT EXISTS gpkg_metadata (id INTEGER CONSTRAINT m_pk PRIMARY KEY ASC NOT NULL, "
          "md_scope TEXT NOT NULL DEFAULT 'dataset', md_standard_uri TEXT NOT NULL, "
          "mime_type TEXT NOT NULL DEFAULT 'text/xml', metadata TEXT NOT NULL DEFAULT '')");
  Execute(dataset,
          "CREATE TABLE IF NOT EXISTS gpkg_metadata_reference (reference_scope TEXT NOT NULL, table_name TEXT, "
          "column_name TEXT, row_id_value INTEGER, "
          "timestamp DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')), "
          "md_file_id INTEGER NOT NULL, md_parent_id INTEGER, "
          "CONSTRAINT crmr_mfi_fk FOREIGN KEY (md_file_id) REFERENCES gpkg_metadata(id), "
          "CONSTRAINT crmr_mpi_fk FOREIGN KEY (md_parent_id) REFERENCES gpkg_metadata(id))");
  Execute(dataset,
          "CREATE TABLE IF NOT EXISTS gpkg_extensions (table_name TEXT, column_name TEXT, "
          "extension_name TEXT NOT NULL, definition TEXT NOT NULL, scope TEXT NOT NULL, "
          "CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name))");
  for (const char* table : {"gpkg_metadata", "gpkg_metadata_reference"}) {
    Execute(dataset, std::string("INSERT OR IGNORE INTO gpkg_extensions VALUES ('") + table +
                         "', NULL, 'gpkg_metadata', 'http://www.geopackage.org/spec120/#extension_metadata', "
                         "'read-write')");
  }
}

std::string DocumentIdQuery(const std::string& table) {
  return "SELECT m.id FROM gpkg_metadata m JOIN gpkg_metadata_reference r ON r.md_file_id = m.id "
         "WHERE r.reference_scope = 'table' AND lower(r.table_name) = lower(" +
         Quoted(table) + ") AND m.md_standard_uri = " + Quoted(kStandard) + " ORDER BY m.id DESC LIMIT 1";
}

}  // namespace

std::optional<std::string> ReadGeoPackageDocument(GDALDataset& dataset, const std::string& table) {
  QuietGdalErrors quiet;
  if (!HasMetadataTables(dataset)) return std::nullopt;
  const auto id = QueryText(dataset, DocumentIdQuery(table));
  if (!id) return std::nullopt;
  return QueryText(dataset, "SELECT metadata FROM gpkg_metadata WHERE id = " + *id);
}

void WriteGeoPackageDocument(GDALDataset& dataset, const std::string& table, const std::string& xml) {
  QuietGdalErrors quiet;
  CreateMetadataTables(dataset);
  if (const auto id = QueryText(dataset, DocumentIdQuery(table))) {
    Execute(dataset, "UPDATE gpkg_metadata SET metadata = " + Quoted(xml) + " WHERE id = " + *id);
    Execute(dataset,
            "UPDATE gpkg_metadata_reference SET timestamp = strftime('%Y-%m-%dT%H:%M:%fZ','now') "
            "WHERE md_file_id = " + *id);
    return;
  }
  Execute(dataset, "INSERT INTO gpkg_metadata (md_scope, md_standard_uri, mime_type, metadata) VALUES "
                   "('dataset', " + Quoted(kStandard) + ", 'text/xml', " + Quoted(xml) + ")");
  Execute(dataset, "INSERT INTO gpkg_metadata_reference (reference_scope, table_name, md_file_id) VALUES "
                   "('table', " + Quoted(table) + ", last_insert_rowid())");
}

void DeleteGeoPackageDocuments(GDALDataset& dataset, const std::string& table) {
  QuietGdalErrors quiet;
  if (!HasMetadataTables(dataset)) return;
  const std::string name = Quoted(table);
  Execute(dataset,
          "DELETE FROM gpkg_metadata WHERE id IN (SELECT md_file_id FROM gpkg_metadata_reference "
          "WHERE lower(table_name) = lower(" + name + ")) AND id NOT IN (SELECT md_file_id FROM "
          "gpkg_metadata_reference WHERE table_name IS NULL OR lower(table_name) <> lower(" + name + "))");
  Execute(dataset, "DELETE FROM gpkg_metadata_reference WHERE lower(table_name) = lower(" + name + ")");
}

}  // namespace tarnwick::platform::internal
