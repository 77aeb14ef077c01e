#include "platform/headless/gdi/objects.h"

using namespace headless;

HFONT CreateFontIndirectW(const LOGFONTW* description) {
    if (description == nullptr) return fails(ERROR_INVALID_PARAMETER);
    return guarded([&] { return handOver<HFONT>(std::make_unique<Font>(*description)); });
}
