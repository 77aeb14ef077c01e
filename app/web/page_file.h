// The page's own files, which are part of the program.
#pragma once

#include <span>
#include <string_view>

namespace app::web {

struct PageFile {
    std::string_view path;  // of its address: "/", "/app.js"
    std::string_view type;
    std::string_view bytes;
};

std::span<const PageFile> pageFiles();

}  // namespace app::web
