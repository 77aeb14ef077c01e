// The characters of a text element as drawn: white space collapsed, each with its style and position.
//
//     const TextCharacters text = collectCharacters(context, element);
//     for (const TextCharacter& one : text.characters) draw(text.bytes.substr(one.begin, one.size), …);
//
// Positions come from the lists of the innermost element that has one for the character; a character beyond
// the sixteen-bit ones takes two places of them. A text beyond kMostCharacters is cut.
#pragma once

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "canvas/text_outline.h"
#include "formats/svg/draw/context/context.h"

namespace svg {

constexpr std::size_t kMostCharacters = std::size_t{1} << 16;
constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

// A part of a text with opacity, a clip path, a mask or a filter of its own.
struct TextEffect {
    pugi::xml_node node;
    Style style;
    std::shared_ptr<const TextEffect> outer;  // that it lies in; null: none
};

// The text element, or one of tspan, textPath, tref, a within it.
struct TextSpan {
    Style style;
    pugi::xml_node textPath;       // around it, or null
    double baselineShift = 0;      // upwards, with that of the elements around
    double textLength = -1;        // negative: as long as it is
    bool stretchesGlyphs = false;  // to the text length
    // The span that asks for each of the lines, itself or one around it; negative: none.
    int underline = -1, overline = -1, lineThrough = -1;
    std::size_t first = 0, last = 0;  // its characters
    std::shared_ptr<const TextEffect> effect;
};

struct TextCharacter {
    std::size_t begin = 0;  // in `bytes`
    std::size_t size = 0;
    std::size_t span = 0;
    char32_t code = 0;
    // Absolute: NaN where the character follows the one before.
    double x = kNowhere, y = kNowhere;
    double dx = 0, dy = 0;
    double rotate = 0;  // degrees
};

struct TextCharacters {
    std::string bytes;  // UTF-8
    std::vector<TextCharacter> characters;
    // In the order of their start tags. Elements around the text that ask for lines come first, without characters.
    std::vector<TextSpan> spans;
};

TextCharacters collectCharacters(DrawContext& context, const DrawnElement& text);

// What a style says of letters.
AFont fontOf(const Style& style);

// The end of the cluster (a letter with the marks upon it) that starts at a character.
std::size_t clusterEnd(const std::vector<TextCharacter>& characters, std::size_t first, std::size_t end);

}  // namespace svg
