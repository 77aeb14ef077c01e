// Dialog templates, DIALOG and DIALOGEX, out of the bytes of a resource.
//
// The bytes may come from anybody: every count, text and offset is checked against the span before use. What
// is cut off has no template at all; bytes behind the last control are nobody's.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/headless/include/winapi/dialog.h"

namespace headless {

// A number or a text; neither is none.
struct TemplateName {
    WORD number = 0;
    std::u16string text;
};

struct ControlTemplate {
    DWORD style = 0;
    DWORD extended_style = 0;
    RECT units = {};  // left, top, width and height in dialog units
    int id = 0;
    TemplateName class_name;  // 0x80 to 0x85: Button, Edit, Static, ListBox, ScrollBar, ComboBox
    TemplateName text;
};

struct DialogTemplate {
    DWORD style = 0;
    DWORD extended_style = 0;
    RECT units = {};
    TemplateName class_name;
    std::u16string title;
    int point_size = 0;  // of the font, with DS_SETFONT
    int weight = 0;
    bool italic = false;
    BYTE charset = 0;
    std::u16string face;
    std::vector<ControlTemplate> controls;
};

std::optional<DialogTemplate> read_dialog_template(std::span<const std::uint8_t> bytes);

}  // namespace headless
