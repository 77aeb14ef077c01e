// The View Filter dialog's window: where it opens, how it is laid out, what it remembers.
#include <gtest/gtest.h>

#include <limits>

#include "dialog_window.h"
#include "kzutil/archive.h"
#include "support/archive_node.h"

using driver::DialogDescription;
using test::control;
using test::Dialog;
using test::heightOf;
using test::pressing;
using test::widthOf;

namespace {

// "left top width height"
std::string told(const RECT& rect) {
    return std::to_string(rect.left) + ' ' + std::to_string(rect.top) + ' ' + std::to_string(widthOf(rect)) +
           ' ' + std::to_string(heightOf(rect));
}

class DialogGeometry : public test::DialogTest {
protected:
    const std::filesystem::path file = folder.path() / "AViewFilterPrefs.prefs";

    // Opens the dialog, does something with it and closes it; where it opened.
    RECT open(const test::Step& act, const char* caption) {
        RECT rect = {};
        use({[&](Dialog& dialog) {
            rect = dialog.describe().rect;
            act(dialog);
            dialog.press(caption);
        }});
        return rect;
    }
    RECT open() {
        return open([](Dialog&) {}, "Cancel");
    }
    // The template's own, as a window.
    RECT first() {
        if (widthOf(m_first) == 0) {
            AConfig::m_BackupSettingsOnOff = 0;
            m_first = open();
            AConfig::m_BackupSettingsOnOff = 1;
        }
        return m_first;
    }
    void store(int width, int height, int left, int top) {
        CWnd parent;
        AViewFilterDialog dialog(&tool, nullptr, &parent);
        AViewFilterPrefs prefs(&dialog);
        dialog.m_width = width;
        dialog.m_height = height;
        dialog.m_left = left;
        dialog.m_top = top;
    }

private:
    RECT m_first = {};
};

}  // namespace

TEST_F(DialogGeometry, OfTheFirstUseIsTheTemplatesAt100And100) {
    const RECT rect = open();
    EXPECT_EQ(rect.left, 100);
    EXPECT_EQ(rect.top, 100);
    EXPECT_GE(widthOf(rect), 360);
    EXPECT_GE(heightOf(rect), 150);
}

TEST_F(DialogGeometry, KeepsTheButtonsAtTheLowerRightAndStretchesTheTree) {
    DialogDescription before, after;
    open(
        [&](Dialog& dialog) {
            before = dialog.describe();
            dialog.size(widthOf(before.rect) + 70, heightOf(before.rect) + 45);
            after = dialog.describe();
        },
        "OK");
    EXPECT_EQ(widthOf(after.rect), widthOf(before.rect) + 70);
    EXPECT_EQ(heightOf(after.rect), heightOf(before.rect) + 45);
    for (const int id : {1066, 1067, IDOK, IDCANCEL}) {
        RECT expected = control(before, id).rect;
        OffsetRect(&expected, 70, 45);
        EXPECT_EQ(told(control(after, id).rect), told(expected)) << id;
    }
    RECT tree = control(before, 1059).rect;
    tree.right += 70;
    tree.bottom += 45;
    EXPECT_EQ(told(control(after, 1059).rect), told(tree));
}

TEST_F(DialogGeometry, CannotBeMadeSmallerThan360By150) {
    DialogDescription before, after;
    open(
        [&](Dialog& dialog) {
            before = dialog.describe();
            dialog.size(10, 10);
            after = dialog.describe();
            dialog.size(widthOf(before.rect), heightOf(before.rect));
            const DialogDescription again = dialog.describe();
            for (const int id : {1059, 1066, 1067, IDOK, IDCANCEL})
                EXPECT_EQ(told(control(again, id).rect), told(control(before, id).rect)) << id;
        },
        "Cancel");
    EXPECT_EQ(widthOf(after.rect), 360);
    EXPECT_EQ(heightOf(after.rect), 150);
}

TEST_F(DialogGeometry, IsRememberedAfterOkAndAfterCancel) {
    for (const char* caption : {"OK", "Cancel"}) {
        const int more = caption[0] == 'O' ? 0 : 33;
        open(
            [&](Dialog& dialog) {
                dialog.size(480 + more, 310 + more);
                dialog.move(40 + more, 60 + more);
            },
            caption);
        const std::string expected = std::to_string(40 + more) + ' ' + std::to_string(60 + more) + ' ' +
                                     std::to_string(480 + more) + ' ' + std::to_string(310 + more);
        EXPECT_EQ(told(open()), expected);
    }
}

TEST_F(DialogGeometry, IsNotRememberedWhenTheHostKeepsNoSettings) {
    const RECT rect = first();
    AConfig::m_BackupSettingsOnOff = 0;
    open([](Dialog& dialog) { dialog.move(7, 8); }, "OK");
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(told(open()), told(rect));
    AConfig::m_BackupSettingsOnOff = 1;
}

TEST_F(DialogGeometry, OfMinusOneIsTheTemplates) {
    const RECT rect = first();
    store(-1, 300, 20, 30);
    EXPECT_EQ(told(open()), "20 30 " + std::to_string(widthOf(rect)) + " 300");
    store(500, -1, 20, 30);
    EXPECT_EQ(told(open()), "20 30 500 " + std::to_string(heightOf(rect)));
}

// Only the very value -1 means that there is none.
TEST_F(DialogGeometry, OfOtherNegativeSizesIsTheSmallest) {
    store(-2, -2, 20, 30);
    EXPECT_EQ(told(open()), "20 30 360 150");
}

TEST_F(DialogGeometry, OfAnyStoredNumbersOpens) {
    constexpr int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
    for (const int number : {kLeast, kLeast + 1, -40'000, 40'000, kMost - 1, kMost}) {
        store(number, number, number, number);
        open();
        EXPECT_TRUE(std::filesystem::exists(file)) << number;
    }
}

TEST_F(DialogGeometry, OfAFileThatIsNoneIsThatOfTheFirstUse) {
    const std::string expected = told(first());
    store(500, 400, 20, 30);
    ASSERT_NE(told(open()), expected);
    std::filesystem::resize_file(file, std::filesystem::file_size(file) - 1);
    EXPECT_EQ(told(open()), expected);
    EXPECT_EQ(told(open()), expected) << "and is stored again";
    EXPECT_GT(std::filesystem::file_size(file), 60U);
}

TEST_F(DialogGeometry, IsNotAskedOfADialogWithAParent) {
    store(500, 400, 20, 30);
    CWnd parent;
    const AViewFilterDialog dialog(&tool, nullptr, &parent);
    EXPECT_EQ(dialog.m_width, -1);
    EXPECT_EQ(dialog.m_height, -1);
    EXPECT_EQ(dialog.m_left, 100);
    EXPECT_EQ(dialog.m_top, 100);
}

namespace {

class ViewFilterPrefs : public testing::Test {
protected:
    test::Drawing drawing;
    test::TempFolder folder;
    AViewFilterTool tool;
    CWnd parent;
    AViewFilterDialog dialog{&tool, nullptr, &parent};

    void SetUp() override { AConfig::m_BackupSettingsOnOff = 0; }
    void TearDown() override {
        AConfig::m_BackupSettingsOnOff = 1;
        APreferenceManager::setFolder({});
    }
    void give(int width, int height, int left, int top) {
        dialog.m_width = width;
        dialog.m_height = height;
        dialog.m_left = left;
        dialog.m_top = top;
    }
    std::string geometry() const {
        return std::to_string(dialog.m_width) + ' ' + std::to_string(dialog.m_height) + ' ' +
               std::to_string(dialog.m_left) + ' ' + std::to_string(dialog.m_top);
    }
    static Bytes record(BYTE baseTag = 0) {
        Bytes base;
        appendNumber(base, baseTag, 1);
        appendNumber(base, 0, 4);
        Bytes fields;
        appendNumber(fields, 0, 1);
        appendNumber(fields, base.size(), 8);
        fields.insert(fields.end(), base.begin(), base.end());
        appendNumber(fields, 1, 1);
        for (const unsigned value : {0xffffffffu, 300u}) appendNumber(fields, value, 4);
        appendNumber(fields, 2, 1);
        for (const unsigned value : {40u, 0xfffffff6u}) appendNumber(fields, value, 4);
        Bytes bytes;
        appendNumber(bytes, fields.size(), 8);
        bytes.insert(bytes.end(), fields.begin(), fields.end());
        return bytes;
    }
};

}  // namespace

TEST_F(ViewFilterPrefs, GiveTheDialogTheGeometryOfItsFirstUse) {
    give(1, 2, 3, 4);
    const AViewFilterPrefs prefs(&dialog);
    EXPECT_EQ(geometry(), "-1 -1 100 100");
    EXPECT_EQ(prefs.getClassName(), _T("AViewFilterPrefs"));
    EXPECT_EQ(prefs.getVersion(), 0) << "the base's";
    EXPECT_EQ(prefs.createInstance(), nullptr);
}

TEST_F(ViewFilterPrefs, AreStoredAsARecord) {
    AViewFilterPrefs prefs(&dialog);
    give(-1, 300, 40, -10);
    AArchive out;
    EXPECT_EQ(prefs.orbiSerialize(out), 1);
    EXPECT_EQ(contentOf(out.takeBytes()), record());
    give(0, 0, 0, 0);
    AArchive in(sealed(record()));
    EXPECT_EQ(prefs.orbiSerialize(in), 1);
    EXPECT_EQ(geometry(), "-1 300 40 -10");
}

TEST_F(ViewFilterPrefs, LeaveTheDialogAsItIsWhenTheBaseFails) {
    AViewFilterPrefs prefs(&dialog);
    give(1, 2, 3, 4);
    AArchive in(sealed(record(9)));
    EXPECT_EQ(prefs.orbiSerialize(in), 0);
    EXPECT_EQ(geometry(), "1 2 3 4");
}

TEST_F(ViewFilterPrefs, AreStoredWhenTheyGoAndLoadedWhenTheyCome) {
    APreferenceManager::setFolder(folder.path());
    {
        const AViewFilterPrefs prefs(&dialog);
        give(5, 6, 7, 8);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path())) << "the host keeps no settings";
    AConfig::m_BackupSettingsOnOff = 1;
    {
        const AViewFilterPrefs prefs(&dialog);
        EXPECT_EQ(geometry(), "-1 -1 100 100");
        give(5, 6, 7, 8);
    }
    give(0, 0, 0, 0);
    const AViewFilterPrefs prefs(&dialog);
    EXPECT_EQ(geometry(), "5 6 7 8");
}

TEST_F(ViewFilterPrefs, ThatAreHalfReadLeaveTheGeometryOfTheFirstUse) {
    APreferenceManager::setFolder(folder.path());
    Bytes content;
    appendText(content, _T("AViewFilterPrefs"));
    const Bytes whole = record();
    content.insert(content.end(), whole.begin(), whole.end());
    for (std::size_t size = 0; size < content.size(); ++size) {
        const Bytes bytes =
            sealed(Bytes(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(size)));
        folder.write("AViewFilterPrefs.prefs", std::string(bytes.begin(), bytes.end()));
        const AViewFilterPrefs prefs(&dialog);
        EXPECT_EQ(geometry(), "-1 -1 100 100") << size << " bytes";
    }
}
