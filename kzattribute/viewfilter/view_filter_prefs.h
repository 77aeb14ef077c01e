// The View Filter dialog's size and position, kept from one use to the next.
//
// It reads and writes the fields of its dialog, so it cannot be made without one: it has no factory, and an
// archive that holds one reads as null. Lives as long as the dialog, which loads at its begin and stores at
// its end.
#pragma once

#include "kzutil/root.h"

class AViewFilterDialog;

class AViewFilterPrefs : public ARoot {
public:
    static constexpr const WCHAR* className = _T("AViewFilterPrefs");

    // Gives the dialog the geometry of its first use, and then what is stored.
    explicit AViewFilterPrefs(AViewFilterDialog* dialog);
    AViewFilterPrefs(const AViewFilterPrefs&) = delete;
    AViewFilterPrefs& operator=(const AViewFilterPrefs&) = delete;
    // Stores the dialog's geometry, unless the host keeps no settings.
    ~AViewFilterPrefs() override;

    const AString& getClassName() const override;
    // 1; 0 as soon as the base's part fails, the record then left open: the archive closes it.
    int orbiSerialize(AArchive& archive) override;

private:
    AViewFilterDialog* m_dialog;  // not owned
};
