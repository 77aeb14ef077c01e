// A page of a property sheet: a dialog that its sheet creates when it is first shown.
//
// The record of the page, m_psp, is read when its sheet opens; until then its flags and title may be changed:
//
//     m_psp.pszTitle = m_title;          // must live as long as the page
//     m_psp.dwFlags |= PSP_USETITLE;
//     m_psp.dwFlags &= ~PSP_HASHELP;
#pragma once

#include <memory>

#include "platform/afx/dialog.h"

class AfxWindowCreation;
class CPropertySheet;

class CPropertyPage : public CDialog {
public:
    // The caption: a string's id; 0: the template's caption.
    explicit CPropertyPage(UINT templateId, UINT captionId = 0);
    ~CPropertyPage() override;

    PROPSHEETPAGEW m_psp = {};

    // Tells the sheet whether there is something to apply.
    void SetModified(BOOL changed = TRUE);

    // The page is shown: again, with the members in the controls. FALSE refuses.
    virtual BOOL OnSetActive();
    // The page is left: reads the controls into the members. FALSE stays.
    virtual BOOL OnKillActive();
    // The sheet applies: OnOK. FALSE keeps the sheet open.
    virtual BOOL OnApply();
    // The sheet was cancelled: OnCancel.
    virtual void OnReset();
    // FALSE keeps the sheet open.
    virtual BOOL OnQueryCancel() { return TRUE; }
    void OnOK() override;
    void OnCancel() override {}

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
    BOOL PreTranslateMessage(MSG*) override { return FALSE; }  // the sheet's

protected:
    std::basic_string<WCHAR> m_strCaption;

private:
    friend class CPropertySheet;
    static UINT CALLBACK Callback(HWND window, UINT message, PROPSHEETPAGEW* record);

    // From the moment at which the sheet makes the page's window until the window is complete.
    std::unique_ptr<AfxWindowCreation> m_creation;
    bool m_shown = false;
};
