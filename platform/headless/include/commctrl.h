// The common controls, off Windows. Include platform/winapi.h instead.
#pragma once

#include "winapi/tree_view.h"
