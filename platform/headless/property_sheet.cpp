#include "platform/headless/include/winapi/property_sheet.h"

#include "platform/headless/guard.h"

INT_PTR PropertySheetW(const PROPSHEETHEADERW*) {
    return headless::fails(ERROR_INVALID_PARAMETER);
}
