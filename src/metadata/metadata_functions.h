#pragma once
// Every metadata routine the tools call, in one include.
#include "metadata/attribute_field.h"
#include "metadata/code_tables.h"
#include "metadata/contacts.h"
#include "metadata/date_time.h"
#include "metadata/document_io.h"
#include "metadata/element_index.h"
#include "metadata/geoprocessing_event.h"
#include "metadata/identification.h"
#include "metadata/property_set.h"
