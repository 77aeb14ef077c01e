// A dialog of pages with tabs.
//
//     CPropertySheet sheet(4181);        // the caption: a string's id
//     sheet.AddPage(&fill);
//     sheet.AddPage(&stroke);
//     sheet.m_psh.dwFlags |= PSH_NOAPPLYNOW;
//     if (sheet.DoModal() == IDOK) …
//
// The sheet does not own its pages; they live longer than DoModal. Its record, m_psh, is read when it opens.
#pragma once

#include <vector>

#include "platform/afx/property_page.h"

class CPropertySheet : public CWnd {
public:
    explicit CPropertySheet(UINT captionId, CWnd* parent = nullptr, UINT firstPage = 0);
    explicit CPropertySheet(LPCWSTR caption, CWnd* parent = nullptr, UINT firstPage = 0);
    ~CPropertySheet() override { DestroyWindow(); }

    PROPSHEETHEADERW m_psh = {};

    // Before the sheet opens; raises CInvalidArgException afterwards.
    void AddPage(CPropertyPage* page);
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    // Raises CInvalidArgException for an index without a page.
    CPropertyPage* GetPage(int index) const;
    // -1 for a page that is not this sheet's.
    int GetPageIndex(const CPropertyPage* page) const;
    // Before the sheet opens and after it closed: the one that it opened or opens with.
    int GetActiveIndex() const;
    CPropertyPage* GetActivePage() const { return GetPage(GetActiveIndex()); }
    BOOL SetActivePage(int index);
    HWND GetTabControl() const { return reinterpret_cast<HWND>(SendMessage(PSM_GETTABCONTROL)); }
    // PSBTN_OK, PSBTN_CANCEL, …
    BOOL PressButton(int button) { return SendMessage(PSM_PRESSBUTTON, static_cast<WPARAM>(button)) != 0; }

    // The id of the button that closed the sheet: IDOK or IDCANCEL; -1 when it cannot be created. Raises what
    // left a handler: the sheet is closed then.
    virtual INT_PTR DoModal();
    BOOL ContinueModal() override;

    // The sheet has its tabs, buttons and first page.
    virtual BOOL OnInitDialog();

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    CWnd* m_pParentWnd = nullptr;
    std::basic_string<WCHAR> m_strCaption;

    DECLARE_MESSAGE_MAP()

private:
    LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    bool create(HWND owner);
    void rememberButton(UINT message, WPARAM wParam);

    std::vector<CPropertyPage*> m_pages;
    INT_PTR m_result = -1;
};
