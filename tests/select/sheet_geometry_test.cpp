// Where the sheet puts its own check box when it is created.
#include "platform/driver/driver.h"
#include "scene.h"
#include "select/select_by_attr_sheet.h"
#include "select/select_by_attr_tool.h"
#include "select/select_page.h"

namespace {

// Looks at the check box as soon as it is there.
class WatchedSheet : public ASelectByAttrSheet {
public:
    using ASelectByAttrSheet::ASelectByAttrSheet;
    ~WatchedSheet() override { DestroyWindow(); }

    CRect client;
    CRect box;
    LONG style = 0;

protected:
    int OnCreate(CREATESTRUCTW* creation) {
        const int result = ASelectByAttrSheet::OnCreate(creation);
        GetClientRect(&client);
        const HWND button = ::GetDlgItem(m_hWnd, IDC_SELECTION_ONLY);
        style = ::GetWindowLongW(button, GWL_STYLE);
        ::GetWindowRect(button, &box);
        ScreenToClient(&box);
        return result;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(WatchedSheet, ASelectByAttrSheet)
ON_WM_CREATE()
END_MESSAGE_MAP()

}  // namespace

TEST(SheetGeometry, TheCheckBoxIsCreated26PixelsAboveTheBottom) {
    test::Scene scene;
    ASelectByAttrTool tool;
    WatchedSheet sheet(&tool, IDS_SELECT_BY_ATTRIBUTES_CAPTION, nullptr, 0);
    sheet.createPage(_T("Fill"));
    sheet.addPages();
    driver::Driver user({[](driver::Dialog& dialog) { dialog.press("Cancel"); }});
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    EXPECT_TRUE(user.finished());
    EXPECT_EQ(sheet.box.left, 24);
    EXPECT_EQ(sheet.box.right, 160);
    EXPECT_EQ(sheet.box.top, sheet.client.bottom - 26);
    EXPECT_EQ(sheet.box.bottom, sheet.client.bottom - 12);
    EXPECT_EQ(static_cast<DWORD>(sheet.style), 0x50010003u);
}
