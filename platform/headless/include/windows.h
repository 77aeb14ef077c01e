// The subset of the Windows API that the project calls, off Windows. Include platform/winapi.h instead.
#pragma once

#include "winapi/types.h"

#include "winapi/dialog.h"
#include "winapi/gdi.h"
#include "winapi/geometry.h"
#include "winapi/module.h"
#include "winapi/text.h"
#include "winapi/window.h"
