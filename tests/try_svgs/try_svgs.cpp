// Opens every SVG file under the given folders and tells which fail, and how many objects the others have.
//
//     try_svgs /usr/share/icons
#include <chrono>
#include <cstdio>

#include "formats/svg/reader.h"

namespace {

struct Totals {
    std::size_t files = 0, failures = 0, empty = 0, objects = 0;
};

void tryFile(const std::filesystem::path& file, Totals& totals) {
    ++totals.files;
    std::string error;
    const auto start = std::chrono::steady_clock::now();
    const auto document = svg::readDrawing(file, error);
    if (!document) {
        ++totals.failures;
        std::printf("failed  %s\n", error.c_str());
        return;
    }
    AFRect bounds;
    document->getDatabase().getBoundingRect(bounds);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    totals.objects += document->getObjectCount();
    if (document->getObjectCount() == 0) {
        ++totals.empty;
        std::printf("empty   %s\n", file.string().c_str());
    } else if (bounds == AFRect()) {
        std::printf("no box  %s\n", file.string().c_str());
    }
    if (time.count() > 1) std::printf("slow    %s: %.1f s\n", file.string().c_str(), time.count());
}

}  // namespace

int main(int count, char** arguments) {
    Totals totals;
    for (int i = 1; i < count; ++i) {
        const auto options = std::filesystem::directory_options::skip_permission_denied;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[i], options)) {
            if (entry.is_regular_file() && entry.path().extension() == ".svg") tryFile(entry.path(), totals);
        }
    }
    std::printf("%zu files, %zu failed, %zu empty, %zu objects\n", totals.files, totals.failures,
                totals.empty, totals.objects);
    return totals.failures == 0 ? 0 : 1;
}
