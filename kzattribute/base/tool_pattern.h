// What all nine tools have in common.
//
// A tool keeps nothing between runs, does its whole work in one start operation and ends it with
// notifyEnd(null). It derives from the pattern, names its constants, calls setUp() in its constructor and
// overrides its start operation:
//
//     class AShowAllTool : public TToolPattern<AShowAllTool> {
//     public:
//         static constexpr const WCHAR* className = _T("AShowAllTool");
//         static constexpr ToolConstants constants{IDS_SHOW_ALL, IDS_TIP_SHOW_ALL, ToolChanges::view};
//         AShowAllTool() { setUp(); }
//         int isValid() override { return viewHasObjects(*this); }
//         int onToolStart() override;
//     };
#pragma once

#include <new>

#include "kzcore/tool/tool.h"
#include "res/resource.h"

enum class ToolChanges { view, selection };

struct ToolConstants {
    UINT nameId;
    UINT descriptionId;
    ToolChanges changes;
};

// The version that every tool reports.
constexpr int kToolVersion = 60;

// The validity of tools that need a drawing with objects: 0 when the host's own test says no, else whether
// the active view's database holds an object. The host's test has made sure that there is a view.
int viewHasObjects(ATool& tool);

template <class Tool>
class TToolPattern : public ATool {
public:
    // Made when it is first asked for: where memory fails, an exception out of a module's static objects would end
    // the host.
    const AString& getClassName() const override {
        static const AString name(Tool::className);
        return name;
    }
    UINT getDisplayNameID() const override { return 0; }
    UINT getDisplayIconID() const override { return 0; }
    // Null when there is no memory for the object.
    ARoot* createInstance() const override { return new (std::nothrow) Tool; }
    int getVersion() const override { return kToolVersion; }

protected:
    // Called last in a tool's constructor, when its members stand.
    void setUp() {
        getClassName();  // made here, so that no run fails for it
        setStackable(1);
        if (Tool::constants.changes == ToolChanges::view)
            setDirtyView(1);
        else
            setDirtySelection(1);
        m_displayName.LoadStringW(Tool::constants.nameId);
        m_descriptionId = static_cast<WORD>(Tool::constants.descriptionId);
        AString description;
        description.LoadStringW(Tool::constants.descriptionId);
        setToolTipStrings(description);
    }
};
