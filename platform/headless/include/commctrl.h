// The subset of the common controls that the project calls, off Windows. Include platform/winapi.h instead.
#pragma once

#include "winapi/image_list.h"
#include "winapi/tab.h"
#include "winapi/tree_view.h"
