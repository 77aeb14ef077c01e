// Compressed drawings, .svgz: gzip around the bytes of a drawing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace svg {

bool isGzip(std::string_view bytes);

// Unpacks one member, or several one after the other. Nothing, and `reason` says why, when the data is damaged, cut off or
// grows beyond every use. Raises bad_alloc.
std::optional<std::string> gunzip(std::string_view bytes, std::string& reason);

// The same bytes on every build: the header carries neither a time nor a name. Raises bad_alloc.
std::string gzip(std::string_view bytes);

}  // namespace svg
