// AViewFilterDialog: the user ticks the colours and brushes that the view shows.
//
//     AViewFilterDialog dialog(&tool, attributeFilterOf(*view), nullptr);
//     dialog.DoModal();   // OK: the view's filter hides what is not ticked; Cancel: it is what it was
//
// The entries are the host's colour and brush classes and, below them, the colours and brushes that objects
// of the active document are painted with. Classes that no object makes use of are not shown.
#pragma once

#include <memory>

#include "checkpage/check_page_base.h"
#include "platform/afx/button.h"
#include "platform/afx/dialog.h"
#include "viewfilter/condition_index.h"
#include "viewfilter/view_attr_filter.h"
#include "viewfilter/view_filter_prefs.h"

class AReferItem;
class AViewFilterTool;

class AViewFilterDialog : public CDialog, public ACheckPageBase {
public:
    // The filter is the view's, or null when it has none of ours. Without a parent the dialog remembers its
    // geometry (AViewFilterPrefs).
    AViewFilterDialog(AViewFilterTool* tool, const AViewAttrFilter* filter, CWnd* parent);
    ~AViewFilterDialog() override;

    // The entry of a class takes in a later one of the same path. A later entry of the same item and path is
    // deleted without being taken in; one of another item is renamed as on every page.
    void addCondition(ACondition* newCondition) override;
    ACheckTree* getTree() override { return &m_tree; }

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void OnSize(UINT how, int width, int height);
    void OnGetMinMaxInfo(MINMAXINFO* info);
    void onShowAll() { m_tree.setAllChecks(1); }
    void onShowNone() { m_tree.setAllChecks(0); }
    DECLARE_MESSAGE_MAP()

    ACheckTree m_tree;
    CButton m_showNoneButton;
    CButton m_showAllButton;
    AViewFilterTool* m_tool;  // not owned
    // A copy of the view's filter as it was when the dialog opened; null when it had none.
    std::unique_ptr<AViewAttrFilter> m_savedFilter;
    ADWordArray m_uncheckedIds;  // serials of the entries that open unchecked

public:
    // The window's outer rectangle on the screen, in pixels; a width or height of -1 is the template's. Kept
    // by AViewFilterPrefs.
    int m_width = -1;
    int m_height = -1;
    int m_left = 100;
    int m_top = 100;

private:
    struct KnownItems;

    void addColorClasses();
    void addClass(const AString& path, const WCHAR* className);
    void addDocumentColors();
    int addReferItem(ARoot* item, KnownItems& known);
    bool markClass(const AString& className, KnownItems& known);
    void addItem(AReferItem& item, AItemPath path);

    void loadFilter(const AViewAttrFilter* filter);
    void checkAllItems();
    void uncheck(const AObArray& exceptions);

    void moveButton(int id, int dx, int dy);
    void keepPosition();

    ConditionIndex m_index;  // of the conditions held
    std::unique_ptr<AViewFilterPrefs> m_prefs;
};
