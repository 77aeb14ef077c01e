// ATool: the base of every tool, with its virtual operations in slot order.
//
// A host creates a tool through its plug-in's export table or from an archive, asks isValid to enable its
// command, calls one start operation and destroys the tool once it has been notified of the end (see
// tool_runner.h). A tool of this base alone does nothing and never ends.
#pragma once

#include <string>

#include "kzutil/object_list.h"
#include "kzutil/rect.h"

class ABrush;
class ACmdUI;
class ADataObject;
class ADialogPage;
class ADevice;
class AMenu;
class AObject;
class APreferenceDialog;
class AReferItem;
class ATool;

enum class AToolOutcome;

// Runs a tool; see tool_runner.h.
AToolOutcome runTool(ATool& tool, AReferItem* item, std::string& error);

enum REPEAT_FLAG : int {};
enum TRANS_FLAG : int {};

// Second base of every tool.
class AListener {
public:
    virtual int listenMessage(UINT message, void* data) = 0;

protected:
    ~AListener() = default;
};

class ATool : public ARoot, public AListener {
public:
    ATool() = default;
    ATool(const ATool&) = delete;
    ATool& operator=(const ATool&) = delete;
    ~ATool() override = default;

    // The virtual operations of ARoot come first; then these, in this order.
    virtual int isDiscarded() const;
    // Bracket a change of the document or the selection; a pair inside a tool's run joins the
    // tool's own step.
    virtual int preChangeObject();
    virtual int postChangeObject(unsigned int nameId, REPEAT_FLAG repeat);
    virtual int postChangeObject(const AString* name, TRANS_FLAG transaction, REPEAT_FLAG repeat);
    virtual void drawHandles(ADevice* device);
    virtual AFRect getHandleRect() const;
    // Non-zero when the tool can start now. The base: there is an active view.
    virtual int isValid();
    virtual int doAction(unsigned int action, void* data);
    virtual int onUpdateCmdUI(ACmdUI* command, const AFPoint& point);
    virtual int onUpdateCmdUI(ACmdUI* command);
    // Start operations: on a point with the host's data (the refer item the user chose), and without. Both
    // return 1 on success.
    virtual int onToolStart(const AFPoint& point, void* data);
    virtual int onToolStart();
    virtual int onToolEnd();
    virtual int onToolSuspend();
    virtual int onToolResume();
    virtual int onToolAbort();
    virtual int onRepeatLast();
    virtual int onSelectionChange();
    virtual int onButtonDown(const AFPoint& point, UINT flags);
    virtual int onButtonDblClk(const AFPoint& point, UINT flags);
    virtual int onButtonTriClk(const AFPoint& point, UINT flags);
    virtual int onButtonUp(const AFPoint& point, UINT flags);
    virtual int onMouseMove(const AFPoint& point, UINT flags);
    virtual int onToolDblClk();
    virtual int canHandleDrag(ADataObject* data);
    virtual int onDragOver(ADataObject* data, const AFPoint& point);
    virtual int onDrop(ADataObject* data, const AFPoint& point);
    virtual int onChar(UINT character);
    virtual int onKey(UINT key, UINT flags);
    virtual int onTimer(UINT_PTR timer);
    virtual int onLocalCommand(UINT command);
    virtual UINT getCursorID(const AFPoint& point);
    virtual AMenu* createContextualMenu(const AFPoint& point);
    virtual ADialogPage* getPage(int index);
    virtual int getPageCount() const;
    virtual int getInitialPageIndex() const;
    virtual AString getHandleTip(int handle) const;
    virtual int hitTest(const AFPoint& point);
    virtual int hitTestHandle(const AFPoint& point);
    virtual int updateHandleTarget(const AFPoint& point);
    virtual void onFWDrawBackGround(ADevice* device);
    virtual void onFWDrawHandles(ADevice* device);
    virtual int onFWToolStart(const AFPoint& point, void* data);
    virtual int onFWToolStart();
    virtual int onFWToolEnd();
    virtual int onFWToolSuspend();
    virtual int onFWToolResume();
    virtual int onFWToolAbort();
    virtual int onFWSelectionChange();
    virtual int onFWButtonDown(const AFPoint& point, UINT flags);
    virtual int onFWButtonDblClk(const AFPoint& point, UINT flags);
    virtual int onFWButtonTriClk(const AFPoint& point, UINT flags);
    virtual int onFWButtonUp(const AFPoint& point, UINT flags);
    virtual int onFWMouseMove(const AFPoint& point, UINT flags);
    virtual int onFWToolDblClk();
    virtual int onFWDragOver(ADataObject* data, const AFPoint& point);
    virtual int onFWDrop(ADataObject* data, const AFPoint& point);
    virtual int onFWChar(UINT character);
    virtual int onFWKey(UINT key, UINT flags);
    virtual int onFWTimer(UINT_PTR timer);
    virtual int onFWLocalCommand(UINT command);
    virtual AString getExceptionContextMessage() const;
    virtual APreferenceDialog* CreatePreferenceDialog();

    int listenMessage(UINT message, void* data) override;

    // Stackable: the host may run it while another tool is suspended. Dirty view and dirty selection: what
    // the host refreshes after the tool.
    void setStackable(int on) { m_stackable = on; }
    void setDirtyView(int on) { m_dirtyView = on; }
    void setDirtySelection(int on) { m_dirtySelection = on; }
    int isStackable() const { return m_stackable; }
    int isDirtyView() const { return m_dirtyView; }
    int isDirtySelection() const { return m_dirtySelection; }

    const AString& getDisplayName() const { return m_displayName; }
    WORD getDescriptionId() const { return m_descriptionId; }
    const AString& getToolTip() const { return m_toolTip; }

    // Redraws the active view, all of it for a null rectangle. `erase` non-zero: the background too.
    void redrawView(int erase, AFRect* area);
    // Tells the host that the tool has finished; `next` is a tool to start after it, or null.
    void notifyEnd(ATool* next);
    bool hasEnded() const { return m_endCount > 0; }
    // How often it told so since it was started: once, when the tool keeps the rules.
    int getEndCount() const { return m_endCount; }

protected:
    void setToolTipStrings(const AString& text) { m_toolTip = text; }

    AString m_displayName;
    WORD m_descriptionId = 0;

private:
    friend AToolOutcome runTool(ATool& tool, AReferItem* item, std::string& error);

    AString m_toolTip;
    int m_stackable = 0;
    int m_dirtyView = 0;
    int m_dirtySelection = 0;
    int m_endCount = 0;
};
