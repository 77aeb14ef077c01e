// Questions to the dynamic loader about the shared objects of this process.
#pragma once

#include <cstddef>
#include <string>

struct link_map;

namespace headless {

// The shared object whose image holds the address; null when none does.
link_map* object_at(const void* address);

// The object behind a handle of dlopen.
link_map* object_of(void* handle);

link_map* program_object();

// The address of a symbol that this very object defines, not one of the libraries it depends on. Null when it
// has none.
void* own_symbol(link_map* object, const char* name);

// How many objects have been unloaded from this process so far: while it stands, every link_map
// is still good.
unsigned long long unload_count();

// The absolute path of the object's file, in UTF-8.
std::string object_path(const link_map* object);

}  // namespace headless
