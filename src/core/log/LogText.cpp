#include "LogText.h"

// Built at compile time, so it is there before any other static data that reads a field.
constinit const QString LogText::s_empty;
