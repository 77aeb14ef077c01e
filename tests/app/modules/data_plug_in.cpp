// A module whose export of the right name is no function.
#include "platform/winapi.h"

extern "C" KZ_EXPORT int APlugInExportGetList;
int APlugInExportGetList = 3;
