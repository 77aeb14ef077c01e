// The View Filter dialog's stored geometry, an archived class of the module.
//
// It reads and writes the fields of its dialog, so it cannot be made without one: it has no factory, and an
// archive that holds one reads as null.
#pragma once

#include "kzutil/root.h"

class AViewFilterDialog;

class AViewFilterPrefs : public ARoot {
public:
    static const AString className;

    explicit AViewFilterPrefs(AViewFilterDialog* dialog) : m_dialog(dialog) {}

    const AString& getClassName() const override { return className; }

protected:
    AViewFilterDialog* m_dialog;  // not owned
};
