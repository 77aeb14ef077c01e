#include "app/web/page_file.h"

#include <array>

// The build puts them in: see CMakeLists.txt.
extern "C" {
extern const char kz_page_html[], kz_page_html_end[];
extern const char kz_page_script[], kz_page_script_end[];
extern const char kz_page_style[], kz_page_style_end[];
extern const char kz_page_icon[], kz_page_icon_end[];
}

namespace app::web {

namespace {

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

std::span<const PageFile> pageFiles() {
    static const std::array files{
        PageFile{"/", "text/html; charset=utf-8", between(kz_page_html, kz_page_html_end)},
        PageFile{"/app.js", "text/javascript; charset=utf-8", between(kz_page_script, kz_page_script_end)},
        PageFile{"/app.css", "text/css; charset=utf-8", between(kz_page_style, kz_page_style_end)},
        PageFile{"/icon.svg", "image/svg+xml", between(kz_page_icon, kz_page_icon_end)},
    };
    return files;
}

}  // namespace app::web
