#pragma once

#include <QJsonObject>

#include "CVCItem.h"

// A record as JSON: the keys are the field names (iconIndex ... parking), times are integer
// seconds since 1970, doubles are numbers. Missing keys read as zero or empty.
QJsonObject cvcItemToJson(const CVCItem &item);
CVCItem cvcItemFromJson(const QJsonObject &object);
