// The subset of property sheets that the project calls, off Windows. Include platform/winapi.h instead.
#pragma once

#include "winapi/property_sheet.h"
