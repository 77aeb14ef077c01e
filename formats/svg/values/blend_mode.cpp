#include "formats/svg/values/blend_mode.h"

#include "formats/svg/values/text_scan.h"

namespace svg {

namespace {

struct Name {
    std::string_view word;
    EBlend mode;
};
constexpr Name kModes[] = {{"normal", EBlend::normal},
                           {"multiply", EBlend::multiply},
                           {"screen", EBlend::screen},
                           {"overlay", EBlend::overlay},
                           {"darken", EBlend::darken},
                           {"lighten", EBlend::lighten},
                           {"color-dodge", EBlend::colorDodge},
                           {"color-burn", EBlend::colorBurn},
                           {"hard-light", EBlend::hardLight},
                           {"soft-light", EBlend::softLight},
                           {"difference", EBlend::difference},
                           {"exclusion", EBlend::exclusion},
                           {"hue", EBlend::hue},
                           {"saturation", EBlend::saturation},
                           {"color", EBlend::color},
                           {"luminosity", EBlend::luminosity}};

// As people write mix-blend-mode; to look for every mixture of capitals would take much longer. Without its
// beginning, since every path has an M.
constexpr std::string_view kSpellings[] = {"blend-mode", "BLEND-MODE", "Blend-Mode"};

}  // namespace

std::optional<EBlend> blendModeOf(std::string_view word) {
    for (const Name& one : kModes) {
        if (equalsNoCase(word, one.word)) return one.mode;
    }
    return std::nullopt;
}

bool asksForBlending(std::string_view text) {
    for (const std::string_view name : kSpellings) {
        for (std::size_t at = text.find(name); at != text.npos; at = text.find(name, at)) {
            at += name.size();
            const std::size_t value = text.find_first_not_of(" \t\r\n\f:", at);
            if (value == text.npos) break;
            constexpr std::string_view kNormal = "normal";
            if (!equalsNoCase(text.substr(value, kNormal.size()), kNormal)) return true;
        }
    }
    return false;
}

}  // namespace svg
