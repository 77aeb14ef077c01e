// What of a module can be called.
#pragma once

// Whether the address lies in code that is loaded, not in data.
bool isModuleCode(const void* address);
