// Property sheets, on both controls.
#include <memory>
#include <stdexcept>

#include "platform/afx/exceptions.h"
#include "platform/afx/property_sheet.h"
#include "tests/platform_ui/dialog_support.h"

namespace {

// Writes down what its sheet tells it.
class Page : public CPropertyPage {
public:
    Page(const char* pageName, LPCWSTR title, Strings& log)
        : CPropertyPage(IDD_PAGE), name(pageName), seen(log) {
        m_psp.pszTitle = title;
        m_psp.dwFlags |= PSP_USETITLE;
    }
    ~Page() override { DestroyWindow(); }

    std::string name;
    Strings& seen;
    int allTypes = 0;
    bool stays = false;
    bool refusesToApply = false;
    bool throwsOnApply = false;

    BOOL OnInitDialog() override {
        CPropertyPage::OnInitDialog();
        tell("init");
        return TRUE;
    }
    BOOL OnSetActive() override {
        tell("active");
        return CPropertyPage::OnSetActive();
    }
    BOOL OnKillActive() override {
        tell("left");
        return !stays && CPropertyPage::OnKillActive();
    }
    BOOL OnApply() override { return !refusesToApply && CPropertyPage::OnApply(); }
    void OnOK() override {
        tell("ok");
        if (throwsOnApply) throw std::runtime_error("left a page");
    }
    void OnCancel() override { tell("cancel"); }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        CPropertyPage::DoDataExchange(exchange);
        DDX_Check(exchange, IDC_ALL_TYPES, allTypes);
    }
    void onAllTypes() {
        UpdateData(TRUE);
        tell(allTypes ? "all types" : "some types");
    }
    DECLARE_MESSAGE_MAP()

private:
    void tell(const char* what) { seen.push_back(name + " " + what); }
};

BEGIN_MESSAGE_MAP(Page, CPropertyPage)
ON_BN_CLICKED(IDC_ALL_TYPES, onAllTypes)
END_MESSAGE_MAP()

// A sheet with a check box of its own at its lower left corner.
class Sheet : public CPropertySheet {
public:
    explicit Sheet(UINT firstPage = 0) : CPropertySheet(IDS_SHEET_CAPTION, nullptr, firstPage) {
        m_psh.dwFlags |= PSH_NOAPPLYNOW;
    }
    ~Sheet() override { DestroyWindow(); }

    Strings seen;
    CButton box;
    int selectionOnly = 0;
    std::vector<std::unique_ptr<Page>> pages;

    void setParent(CWnd& parent) { m_pParentWnd = &parent; }
    Page& add(const char* name, LPCWSTR title) {
        pages.push_back(std::make_unique<Page>(name, title, seen));
        AddPage(pages.back().get());
        return *pages.back();
    }
    void addTwo() {
        add("fill", _T("Fill"));
        add("stroke", _T("Stroke"));
    }

    BOOL OnInitDialog() override {
        const BOOL result = CPropertySheet::OnInitDialog();
        seen.push_back("sheet init");
        box.SendMessage(WM_SETFONT, static_cast<WPARAM>(SendMessage(WM_GETFONT)), TRUE);
        UpdateData(FALSE);
        return result;
    }

protected:
    int OnCreate(CREATESTRUCTW* create) {
        const int result = CPropertySheet::OnCreate(create);
        CRect client;
        GetClientRect(client);
        box.Create(_T("Selection only"), WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX,
                   CRect(24, client.bottom - 26, 160, client.bottom - 12), this, 1062);
        seen.push_back("box " + placeIn(m_hWnd, box));
        return result;
    }
    void OnSize(UINT type, int width, int height) {
        CPropertySheet::OnSize(type, width, height);
        box.MoveWindow(24, height - 24, 136, 14);
    }
    void DoDataExchange(CDataExchange* exchange) override {
        CPropertySheet::DoDataExchange(exchange);
        DDX_Check(exchange, 1062, selectionOnly);
    }
    void onSelectionOnly() {
        UpdateData(TRUE);
        seen.push_back(selectionOnly ? "selection only" : "everything");
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Sheet, CPropertySheet)
ON_WM_CREATE()
ON_WM_SIZE()
ON_BN_CLICKED(1062, onSelectionOnly)
END_MESSAGE_MAP()

constexpr int tabs_id = 0x3020;

}  // namespace

TEST(PropertySheets, OpenInTheMiddleOfTheirOwner) {
    CWnd owner;
    ASSERT_TRUE(
        owner.CreateEx(0, nullptr, _T("Owner"), WS_POPUP | WS_VISIBLE, CRect(100, 60, 900, 660), nullptr, 0));
    CRect place;
    const auto open = [&] {
        Sheet sheet;
        sheet.add("fill", _T("Fill"));
        sheet.setParent(owner);
        driver::Driver user({[&](driver::Dialog& dialog) {
            sheet.GetWindowRect(place);
            dialog.press("OK");
        }});
        EXPECT_EQ(sheet.DoModal(), IDOK);
    };
    open();
    EXPECT_NEAR(place.left + place.right, 2 * 500, 1);
    EXPECT_NEAR(place.top + place.bottom, 2 * 360, 1);
    owner.MoveWindow(40, 50, 200, 100);
    open();
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.top, 50) << "its caption stays within reach";
    owner.DestroyWindow();
}

TEST(PropertySheets, AreAsLargeAsTheirPageNeeds) {
    Sheet sheet;
    sheet.add("fill", _T("Fill"));
    driver::Driver user({[&](driver::Dialog& open) {
        EXPECT_EQ(placeIn(nullptr, sheet), "0,0 371x293");
        EXPECT_EQ(placeOf(sheet, tabs_id), "12320 6,7 353x224");
        EXPECT_EQ(placeIn(sheet, *sheet.GetActivePage()), "10,29 345x198");
        EXPECT_EQ(placeOf(sheet, IDOK), "1 203,238 75x23");
        EXPECT_EQ(placeOf(sheet, IDCANCEL), "2 284,238 75x23");
        EXPECT_EQ(placeOf(*sheet.GetActivePage(), IDC_TREE), "1059 11,34 324x153");
        open.press("OK");
    }});
    EXPECT_EQ(sheet.DoModal(), IDOK);
    EXPECT_TRUE(user.finished());
}

TEST(PropertySheets, MakeRoomForASecondRowOfTabs) {
    Sheet sheet;
    for (LPCWSTR title :
         {_T("Object"), _T("Dimension"), _T("Fill"), _T("Stroke"), _T("Effect"), _T("Layer"), _T("Color")})
        sheet.add("page", title);
    driver::Driver user({[&](driver::Dialog& open) {
        EXPECT_EQ(SendMessageW(sheet.GetTabControl(), TCM_GETROWCOUNT, 0, 0), 2);
        EXPECT_EQ(placeIn(nullptr, sheet), "0,0 371x311");
        EXPECT_EQ(placeOf(sheet, tabs_id), "12320 6,7 353x242");
        EXPECT_EQ(placeIn(sheet, *sheet.GetActivePage()), "10,47 345x198");
        EXPECT_EQ(placeOf(sheet, IDOK), "1 203,256 75x23");
        for (const char* title : {"Color", "Object", "Stroke", "Dimension"}) {
            open.page(title);
            EXPECT_EQ(open.describe().page, title);
            EXPECT_EQ(placeIn(sheet, *sheet.GetActivePage()), "10,47 345x198");
        }
    }});
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
}

TEST(PropertySheets, HaveTheStylesOfADialogAndOfChildPages) {
    Sheet sheet;
    sheet.addTwo();
    driver::Driver user({[&](driver::Dialog&) {
        EXPECT_EQ(sheet.GetStyle(), 0x94C820C4u);
        EXPECT_EQ(sheet.GetExStyle(), 0x00010101u);
        EXPECT_EQ(sheet.GetActivePage()->GetStyle(), 0x50010444u);
        EXPECT_EQ(sheet.GetActivePage()->GetExStyle(), 0x00010000u);
        EXPECT_EQ(sheet.GetWindowText(), _T("Select by Attributes"));
    }});
    sheet.DoModal();
}

TEST(PropertySheets, CreateAPageWhenItIsFirstShown) {
    Sheet sheet;
    sheet.addTwo();
    driver::Driver user({[&](driver::Dialog& open) {
        EXPECT_EQ(sheet.pages[1]->m_hWnd, nullptr);
        EXPECT_EQ(open.describe().pages, (Strings{"Fill", "Stroke"}));
        open.page("Stroke");
        EXPECT_EQ(sheet.GetActivePage(), sheet.pages[1].get());
        EXPECT_EQ(sheet.GetActiveIndex(), 1);
        EXPECT_FALSE(sheet.pages[0]->IsWindowVisible());
        open.page("Fill");
        open.press("OK");
    }});
    EXPECT_EQ(sheet.DoModal(), IDOK);
    sheet.seen.erase(sheet.seen.begin());
    EXPECT_EQ(sheet.seen,
              (Strings{"fill init", "fill active", "sheet init", "fill left", "stroke init", "stroke active",
                       "stroke left", "fill active", "fill left", "fill ok", "stroke ok"}));
}

TEST(PropertySheets, OpenWithTheirFirstPage) {
    Sheet sheet(1);
    sheet.addTwo();
    driver::Driver user({[&](driver::Dialog& open) {
        EXPECT_EQ(open.describe().page, "Stroke");
        EXPECT_EQ(sheet.pages[0]->m_hWnd, nullptr);
        open.press("OK");
    }});
    EXPECT_EQ(sheet.DoModal(), IDOK);
    EXPECT_EQ(sheet.seen.back(), "stroke ok") << "the page that was never shown is not asked";
}

TEST(PropertySheets, TellTheShownPagesThatTheyWereCancelled) {
    Sheet sheet;
    sheet.addTwo();
    driver::Driver user({[](driver::Dialog& open) { open.press("Cancel"); }});
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    EXPECT_EQ(sheet.seen.back(), "fill cancel");
}

TEST(PropertySheets, ClosedByTheirFrameAreCancelled) {
    Sheet sheet;
    sheet.addTwo();
    driver::Driver user({[](driver::Dialog& open) { PostMessageW(open.window(), WM_CLOSE, 0, 0); }});
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
    EXPECT_EQ(sheet.seen.back(), "fill cancel");
}

TEST(PropertySheets, StayOnAPageThatIsNotToBeLeft) {
    Sheet sheet;
    sheet.addTwo();
    sheet.pages[0]->stays = true;
    driver::Driver user({[&](driver::Dialog& open) {
        EXPECT_THROW(open.page("Stroke"), driver::Error);
        EXPECT_EQ(open.describe().page, "Fill");
        open.press("OK");
        EXPECT_TRUE(open.isOpen());
        open.press("Cancel");
    }});
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
}

TEST(PropertySheets, StayOpenWhenAPageRefusesToApply) {
    Sheet sheet;
    sheet.addTwo();
    sheet.pages[0]->refusesToApply = true;
    driver::Driver user({[&](driver::Dialog& open) {
        open.press("OK");
        EXPECT_TRUE(open.isOpen());
        sheet.pages[0]->refusesToApply = false;
        open.press("OK");
        EXPECT_FALSE(open.isOpen());
    }});
    EXPECT_EQ(sheet.DoModal(), IDOK);
}

TEST(PropertySheets, HaveNoApplyAndNoHelpButtonUnlessTheyAreWanted) {
    for (const bool wanted : {false, true}) {
        Sheet sheet;
        sheet.addTwo();
        if (wanted) sheet.m_psh.dwFlags &= ~static_cast<DWORD>(PSH_NOAPPLYNOW);
        driver::Driver user({[&](driver::Dialog& open) {
            Strings captions;
            for (const auto& control : open.describe().controls)
                if (control.className == "Button" && !control.checked) captions.push_back(control.text);
            EXPECT_EQ(captions, wanted ? (Strings{"OK", "Cancel", "Apply"}) : (Strings{"OK", "Cancel"}));
        }});
        sheet.DoModal();
    }
}

TEST(PropertySheets, CarryACheckBoxOfTheirOwn) {
    Sheet sheet;
    sheet.addTwo();
    sheet.selectionOnly = 1;
    driver::Driver user({[&](driver::Dialog& open) {
        EXPECT_EQ(sheet.seen.front(), "box 24,202 136x14");
        EXPECT_EQ(placeOf(sheet, 1062), "1062 24,244 136x14");
        EXPECT_EQ(sheet.box.SendMessage(WM_GETFONT), sheet.SendMessage(WM_GETFONT));
        EXPECT_EQ(sheet.box.GetCheck(), 1);
        open.press("Selection only");
        EXPECT_EQ(sheet.seen.back(), "everything");
        open.press("Selection only");
        open.press("OK");
    }});
    EXPECT_EQ(sheet.DoModal(), IDOK);
    EXPECT_EQ(sheet.selectionOnly, 1);
}

TEST(PropertySheets, PagesKeepTheirControlsInTheirMembers) {
    Sheet sheet;
    sheet.addTwo();
    driver::Driver user({[&](driver::Dialog& open) {
        open.press("All types");
        EXPECT_EQ(sheet.seen.back(), "fill all types");
        open.page("Stroke");
        open.page("Fill");
        EXPECT_EQ(sheet.pages[0]->allTypes, 1);
        open.press("OK");
    }});
    EXPECT_EQ(sheet.DoModal(), IDOK);
}

TEST(PropertySheets, WhatLeavesAPageLeavesTheSheet) {
    Sheet sheet;
    sheet.addTwo();
    sheet.pages[0]->throwsOnApply = true;
    driver::Driver user({[](driver::Dialog& open) { open.press("OK"); }});
    EXPECT_THROW(sheet.DoModal(), std::runtime_error);
    EXPECT_EQ(sheet.m_hWnd, nullptr);
    EXPECT_EQ(sheet.pages[0]->m_hWnd, nullptr);
}

TEST(PropertySheets, FollowTheirProgramAsTheyFollowTheUser) {
    for (const int button : {PSBTN_OK, PSBTN_CANCEL}) {
        Sheet sheet;
        sheet.addTwo();
        driver::Driver user({[&](driver::Dialog& open) {
            EXPECT_TRUE(sheet.SetActivePage(1));
            EXPECT_EQ(open.describe().page, "Stroke");
            EXPECT_THROW(sheet.AddPage(sheet.pages[0].get()), CInvalidArgException) << "too late";
            sheet.PressButton(button);
            EXPECT_FALSE(open.isOpen());
        }});
        EXPECT_EQ(sheet.DoModal(), button == PSBTN_OK ? IDOK : IDCANCEL);
        EXPECT_EQ(sheet.seen.back(), button == PSBTN_OK ? "stroke ok" : "stroke cancel");
    }
}

TEST(PropertySheets, NestedInADialogGiveItBack) {
    TreeDialog dialog;
    Sheet sheet;
    sheet.addTwo();
    dialog.onShowAll = [&] { EXPECT_EQ(sheet.DoModal(), IDOK); };
    driver::Driver user({
        [](driver::Dialog& open) {
            open.press("Show All");
            EXPECT_EQ(open.describe().title, "View Filter");
            open.press("OK");
        },
        [&](driver::Dialog& open) {
            EXPECT_EQ(open.describe().title, "Select by Attributes");
            EXPECT_EQ(GetWindow(sheet, GW_OWNER), dialog.m_hWnd);
            open.page("Stroke");
            open.press("OK");
        },
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(user.finished());
}

TEST(PropertySheets, OpenAgainWithTheirPages) {
    Sheet sheet;
    sheet.addTwo();
    for (int i = 0; i < 2; ++i) {
        driver::Driver user({[](driver::Dialog& open) {
            open.page("Stroke");
            open.press("OK");
        }});
        EXPECT_EQ(sheet.DoModal(), IDOK);
    }
}

TEST(PropertySheets, WithoutPagesOrTemplatesAreNotOpened) {
    Sheet empty;
    EXPECT_EQ(empty.DoModal(), -1);
    Sheet sheet;
    CPropertyPage missing(9999);
    sheet.addTwo();
    sheet.AddPage(&missing);
    EXPECT_EQ(sheet.DoModal(), -1);
    EXPECT_EQ(sheet.m_hWnd, nullptr);
}

TEST(PropertySheets, AnswerForTheirPages) {
    Sheet sheet;
    sheet.addTwo();
    CPropertyPage captioned(IDD_PAGE, IDS_PAGE_CAPTION);
    EXPECT_EQ(std::basic_string<WCHAR>(captioned.m_psp.pszTitle), _T("Captioned"));
    EXPECT_FALSE(captioned.m_psp.dwFlags & PSP_HASHELP);
    EXPECT_EQ(sheet.GetPageCount(), 2);
    EXPECT_EQ(sheet.GetPageIndex(sheet.pages[1].get()), 1);
    EXPECT_EQ(sheet.GetPageIndex(&captioned), -1);
    EXPECT_THROW(sheet.GetPage(2), CInvalidArgException);
    EXPECT_THROW(sheet.GetPage(-1), CInvalidArgException);
    EXPECT_TRUE(sheet.SetActivePage(1));
    EXPECT_EQ(sheet.GetActivePage(), sheet.pages[1].get());
}
