// Dialogs made of templates.
//
//     class Options : public CDialog {
//     public:
//         explicit Options(CWnd* parent = nullptr) : CDialog(10493, parent) {}
//         ~Options() override { DestroyWindow(); }
//
//     protected:
//         void DoDataExchange(CDataExchange* exchange) override;
//         BOOL OnInitDialog() override;
//         void OnOK() override;
//         DECLARE_MESSAGE_MAP()
//     };
//     Options options;
//     if (options.DoModal() == IDOK) …
//
// Templates are looked for along the chain of modules (extension_module.h).
#pragma once

#include "platform/afx/data_exchange.h"

class CDialog : public CWnd {
public:
    CDialog() = default;
    explicit CDialog(UINT templateId, CWnd* parent = nullptr)
        : m_pParentWnd(parent), m_templateId(templateId) {}
    ~CDialog() override { DestroyWindow(); }

    // Modeless; FALSE when the template is missing or damaged, or something of it cannot be created. Raises
    // what left a handler.
    BOOL Create(UINT templateId, CWnd* parent = nullptr);
    using CWnd::Create;

    // Runs the dialog until EndDialog, and returns what that was given; -1 when it cannot be created. Without
    // a parent it stands before the innermost modal window, or the active one. Raises what left a handler:
    // the dialog is closed then.
    virtual INT_PTR DoModal();
    void EndDialog(int result);
    BOOL ContinueModal() override { return !m_ended; }

    // Shows the members in the controls. FALSE when it has set the focus itself.
    virtual BOOL OnInitDialog();

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    // Reads the controls into the members, and ends the dialog with IDOK.
    virtual void OnOK();
    // Ends the dialog with IDCANCEL.
    virtual void OnCancel();

    CWnd* m_pParentWnd = nullptr;

    DECLARE_MESSAGE_MAP()

private:
    bool create(UINT templateId, HWND owner);

    UINT m_templateId = 0;
    bool m_ended = false;
    INT_PTR m_result = -1;
};

// The dialog procedure of every dialog that has an object.
INT_PTR CALLBACK AfxDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
