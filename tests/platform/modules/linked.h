// A library that the test program links, and that links itself into the resource chain before main.
#pragma once

#include "platform/afx/extension_module.h"

const AFX_EXTENSION_MODULE& linked_record();
