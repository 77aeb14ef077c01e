// DIALOG:   style, extended style: u32; controls: u16; x, y, width, height: i16; menu, class, title: name;
//           with DS_SETFONT: point size: u16, face: text.
//           Control, at a multiple of 4: style, extended style: u32; x, y, width, height: i16; id: u16;
//           class, text: name; size of extra data: u16.
// DIALOGEX: 1, 0xFFFF: u16; help: u32; extended style, style: u32; then as above; the font is point size,
//           weight: u16; italic, character set: u8; face. Control: help, extended style, style: u32; x, y,
//           width, height: i16; id: u32; class, text, size.
// Name:     0xFFFF and a u16 number, or a text. Text: UTF-16 up to a zero. All little-endian.
#include "platform/headless/dialog_template.h"

namespace headless {

namespace {

// Reads from front to back; past the end everything is 0, and `failed`.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    bool failed() const { return failed_; }

    BYTE byte() {
        if (place_ >= bytes_.size()) {
            failed_ = true;
            return 0;
        }
        return bytes_[place_++];
    }
    WORD word() {
        const BYTE low = byte();
        return static_cast<WORD>(low | byte() << 8);
    }
    DWORD dword() {
        const DWORD low = word();
        return low | static_cast<DWORD>(word()) << 16;
    }
    RECT rect() {
        RECT rect;
        for (LONG* number : {&rect.left, &rect.top, &rect.right, &rect.bottom})
            *number = static_cast<std::int16_t>(word());
        return rect;
    }
    std::u16string text() {
        std::u16string text;
        while (const WORD character = word()) text += static_cast<char16_t>(character);
        return text;
    }
    TemplateName name() {
        TemplateName name;
        const WORD first = word();
        if (first == 0xFFFF) {
            name.number = word();
        } else if (first != 0) {
            name.text = static_cast<char16_t>(first) + text();
        }
        return name;
    }
    void align() {
        while (place_ % 4 != 0 && !failed_) byte();
    }
    void skip(std::size_t count) {
        if (count > bytes_.size() - place_) failed_ = true;
        for (; count > 0 && !failed_; --count) byte();
    }

private:
    std::span<const std::uint8_t> bytes_;
    std::size_t place_ = 0;
    bool failed_ = false;
};

ControlTemplate read_control(Reader& reader, bool extended) {
    ControlTemplate control;
    reader.align();
    if (extended) {
        reader.dword();  // help
        control.extended_style = reader.dword();
        control.style = reader.dword();
    } else {
        control.style = reader.dword();
        control.extended_style = reader.dword();
    }
    control.units = reader.rect();
    control.id = extended ? static_cast<int>(reader.dword()) : reader.word();
    control.class_name = reader.name();
    control.text = reader.name();
    reader.skip(reader.word());
    return control;
}

void read_font(Reader& reader, bool extended, DialogTemplate& dialog) {
    dialog.point_size = reader.word();
    if (extended) {
        dialog.weight = reader.word();
        dialog.italic = reader.byte() != 0;
        dialog.charset = reader.byte();
    }
    dialog.face = reader.text();
}

}  // namespace

std::optional<DialogTemplate> read_dialog_template(std::span<const std::uint8_t> bytes) {
    Reader reader(bytes);
    DialogTemplate dialog;
    const DWORD first = reader.dword();
    const bool extended = first == 0xFFFF0001;
    if (extended) {
        reader.dword();  // help
        dialog.extended_style = reader.dword();
        dialog.style = reader.dword();
    } else {
        dialog.style = first;
        dialog.extended_style = reader.dword();
    }
    const WORD controls = reader.word();
    dialog.units = reader.rect();
    reader.name();  // the menu
    dialog.class_name = reader.name();
    dialog.title = reader.name().text;
    if (dialog.style & DS_SETFONT) read_font(reader, extended, dialog);
    for (WORD i = 0; i < controls && !reader.failed(); ++i)
        dialog.controls.push_back(read_control(reader, extended));
    if (reader.failed()) return std::nullopt;
    return dialog;
}

}  // namespace headless
