// ACheckPage: a property page with a check tree and two check boxes.
//
//     "All types"  greys the tree out with everything checked; unticked, the user's checks come back
//     "Show all"   lists the conditions that nothing makes use of, too
//
// The owner makes the page, adds its conditions, and shows it in a sheet; a deriving page fills the tree when
// it is initialised.
#pragma once

#include "checkpage/check_page_base.h"
#include "platform/afx/property_page.h"

class ACheckPage : public CPropertyPage, public ACheckPageBase {
public:
    // The owner is the deriving page's to use. The title is the tab's caption.
    ACheckPage(CWnd* owner, const AString& title);
    ~ACheckPage() override { DestroyWindow(); }

    const AString& getTitle() const { return m_title; }
    ACheckTree* getTree() override { return &m_tree; }

protected:
    CWnd* getOwner() const { return m_owner; }
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    void onAllTypes();
    // The "Show all" box was clicked.
    virtual void onShowAll();
    DECLARE_MESSAGE_MAP()

private:
    ACheckTree m_tree;
    CWnd* m_owner;
    AString m_title;
};
