#pragma once

#include "CsvRecordConverter.h"

class LocaleFormats;

class VehicleSession;

// The import's settings for the session's open vehicle.
namespace CsvSessionImport {
CsvConversionSettings settings(const VehicleSession &session, const LocaleFormats &locale);
} // namespace CsvSessionImport
