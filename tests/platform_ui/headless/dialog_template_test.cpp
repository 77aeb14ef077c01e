// Templates come from resources that anybody may have written.
#include "platform/headless/dialog_template.h"

#include <random>

#include "platform/afx/extension_module.h"
#include "tests/platform_ui/dialog_support.h"

namespace {

using Template = std::vector<std::uint8_t>;

Template bytesOf(int id) {
    const LPCWSTR name = MAKEINTRESOURCEW(id);
    const HMODULE module = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC resource = FindResourceW(module, name, RT_DIALOG);
    const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(module, resource)));
    return {bytes, bytes + SizeofResource(module, resource)};
}

}  // namespace

TEST(DialogTemplates, AreReadInBothKinds) {
    const auto extended = headless::read_dialog_template(bytesOf(IDD_RESIZABLE));
    ASSERT_TRUE(extended);
    EXPECT_EQ(extended->title, u"View Filter");
    EXPECT_EQ(extended->face, u"MS Sans Serif");
    EXPECT_EQ(extended->point_size, 8);
    ASSERT_EQ(extended->controls.size(), 5u);
    EXPECT_EQ(extended->controls[1].text.text, u"Show &All");
    EXPECT_EQ(extended->controls[1].class_name.number, 0x80);
    const auto plain = headless::read_dialog_template(bytesOf(IDD_NO_FONT));
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->title, u"No font");
    ASSERT_EQ(plain->controls.size(), 2u);
    EXPECT_EQ(plain->controls[1].id, 1);
    EXPECT_EQ(plain->controls[1].units.right, 50);
}

TEST(DialogTemplates, CutOffAnywhereAreNone) {
    for (const int id : {IDD_RESIZABLE, IDD_NO_FONT, IDD_KEYS}) {
        const Template whole = bytesOf(id);
        for (std::size_t size = 0; size + 4 < whole.size(); ++size) {
            // A copy of its own, so that the sanitizer sees what is read behind it.
            const Template part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_FALSE(headless::read_dialog_template(part)) << id << " cut at " << size;
        }
    }
}

TEST(DialogTemplates, WithChangedBytesAreReadWithinTheirBounds) {
    const Template whole = bytesOf(IDD_RESIZABLE);
    std::mt19937 random(1);
    int read = 0;
    for (int i = 0; i < 20000; ++i) {
        Template changed = whole;
        for (int change = 0; change < 3; ++change)
            changed[random() % changed.size()] = static_cast<std::uint8_t>(random());
        const auto dialog = headless::read_dialog_template(changed);
        if (!dialog) continue;
        ++read;
        EXPECT_LE(dialog->controls.size(), whole.size());
    }
    EXPECT_GT(read, 0);
}
