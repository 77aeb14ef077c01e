// Dialogs that the tests share, and what a test sees of them.
#pragma once

#include "platform/afx/button.h"
#include "platform/afx/dialog.h"
#include "platform/afx/tree_ctrl.h"
#include "platform/driver/driver.h"
#include "tests/platform_ui/res/resource.h"
#include "tests/platform_ui/support.h"

// "id x,y widthxheight", in the client area of the control's dialog.
std::string placeOf(HWND dialog, int id);
// The same of any window in another one's client area, without the id.
std::string placeIn(HWND frame, HWND window);

// A tree whose check boxes toggle between unchecked (1) and checked (3), with pictures for them.
class ToggleTree : public CTreeCtrl {
public:
    ~ToggleTree() override { DestroyWindow(); }

    // Unchecked.
    HTREEITEM add(LPCWSTR text, HTREEITEM parent = TVI_ROOT);
    void showBoxes();

protected:
    void OnLButtonDown(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    CImageList m_boxes;
};

// The resizable dialog: a tree with the items Fill/red, Fill/blue and Stroke, and four buttons.
class TreeDialog : public CDialog {
public:
    explicit TreeDialog(CWnd* parent = nullptr) : CDialog(IDD_RESIZABLE, parent) {}
    ~TreeDialog() override { DestroyWindow(); }

    ToggleTree tree;
    Strings seen;
    std::function<void()> onShowAll;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnGetMinMaxInfo(MINMAXINFO* limits);
    void OnSize(UINT type, int width, int height);
    void showAll();
    void showNone() { seen.push_back("show none"); }
    void OnOK() override;
    void OnCancel() override;
    DECLARE_MESSAGE_MAP()
};
