// Untrusted resource modules: asks the reader what a program asks, and touches every byte of the answers.
#include <cstdlib>

#include "platform/headless/resource_directory.h"

namespace {

using namespace headless;

// Written to, so that reading is not optimised away.
volatile unsigned sink = 0;

void read(Bytes image, Bytes bytes) {
    const bool is_inside = bytes.empty() || (bytes.data() >= image.data() &&
                                             bytes.data() + bytes.size() <= image.data() + image.size());
    if (!is_inside) std::abort();
    unsigned sum = 0;
    for (const std::uint8_t byte : bytes) sum += byte;
    sink = sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes image(data, size);
    const auto directory = open_resources(image);
    if (!directory) return 0;
    const ResourceName names[] = {{1, {}}, {5, {}}, {6, {}}, {7, {}}, {10, {}}, {0, u"Blob"}, {0, u"KzType"}};
    for (const ResourceName& type : names) {
        for (const ResourceName& name : names) {
            const FoundResource found = find_resource(*directory, type, name);
            if (found.error == ERROR_SUCCESS) read(image, found.resource.bytes);
        }
    }
    for (const WORD id : {0, 15, 16, 100, 101, 102, 111, 200, 0xffff})
        read(image, find_string(*directory, id).value_or(Bytes{}));
    // Numbers of data entries come from callers, who may have made them up.
    for (const DWORD entry : {0u, 16u, 80u, 0x7fffffffu, 0xffffffffu}) {
        read(image, resource_bytes(*directory, entry).value_or(Bytes{}));
    }
    return 0;
}
