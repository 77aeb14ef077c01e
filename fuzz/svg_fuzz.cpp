// Reads the input as a drawing and asks for everything that is left until asked for.
#include <cstdint>
#include <string>

#include "formats/svg/reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string error;
    const auto document =
        svg::readDrawingBytes({reinterpret_cast<const char*>(data), size}, "fuzz.svg", error);
    // Either a drawing, or one line that says why not.
    if ((document == nullptr) == error.empty() || error.find('\n') != error.npos) __builtin_trap();
    if (!document) return 0;
    AFRect bounds;
    document->getDatabase().getBoundingRect(bounds);
    for (std::uint32_t i = 1; i <= document->getObjectCount(); ++i) {
        const AObject* const object = document->getObject(i);
        if (document->findObject(object->getNameUtf8()) != object) __builtin_trap();
        AObList items;
        object->getAllReferItems(items, 0x2003);
    }
    return 0;
}
