// Resources in the bytes of a PE image, as they stand in its file: a resource-only DLL, or the image that a
// native module carries.
//
//   std::optional<headless::ResourceDirectory> directory = headless::open_resources(bytes);
//   if (!directory) …                                   // no PE image
//   auto found = headless::find_resource(*directory, {5}, {100});
//   if (found.error == ERROR_SUCCESS) use(found.resource.bytes);
//
// The bytes may come from anybody. Every offset, count, address and size is checked against the span before
// use, so a lying image has fewer resources than it says, and never causes a read outside the span. The
// directory is walked exactly three levels deep (type, name, language), without recursion: tables that
// contain themselves cost nothing.
//
// A resource's language is not chosen: the first in the table counts. Nothing is copied; all answers point
// into the bytes that the directory was opened on.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/headless/include/windows.h"

namespace headless {

using Bytes = std::span<const std::uint8_t>;

struct ResourceDirectory {
    Bytes image;
    Bytes sections;  // the section headers, 40 bytes each
    Bytes root;  // from the root table to the end of its section's bytes; empty in an image without resources
};

// A number, or a text compared without regard to ASCII case. A text "#123" means the number.
struct ResourceName {
    WORD number = 0;
    std::u16string_view text = {};
};

struct Resource {
    DWORD entry =
        0;  // where its data entry stands, counted from the root table: names the resource in its image
    Bytes bytes;
};

struct FoundResource {
    // ERROR_SUCCESS, ERROR_RESOURCE_TYPE_NOT_FOUND, ERROR_RESOURCE_NAME_NOT_FOUND, or
    // ERROR_RESOURCE_DATA_NOT_FOUND when the tables have the name but point at nothing.
    DWORD error = ERROR_SUCCESS;
    Resource resource;
};

// None when the bytes are no PE image (PE32 or PE32+), or one whose headers reach beyond the bytes.
std::optional<ResourceDirectory> open_resources(Bytes image);

FoundResource find_resource(const ResourceDirectory& directory, ResourceName type, ResourceName name);

// The bytes that a data entry describes; none unless all of them lie within one section.
std::optional<Bytes> resource_bytes(const ResourceDirectory& directory, DWORD entry);

// The UTF-16 code units of a string of the string table, as little-endian bytes of any alignment. None when
// the string's block is missing or ends before the string; a block's unused places are empty strings.
std::optional<Bytes> find_string(const ResourceDirectory& directory, WORD id);

}  // namespace headless
