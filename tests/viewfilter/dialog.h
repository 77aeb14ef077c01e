// The View Filter dialog from inside, and the plain rules by which it lists its entries.
#pragma once

#include "kzcore/document/application.h"
#include "support.h"
#include "support/drawing.h"
#include "viewfilter/view_filter_dialog.h"
#include "viewfilter/view_filter_tool.h"

namespace test {

// Opens up what the dialog keeps to itself.
class OpenedDialog : public AViewFilterDialog {
public:
    using AViewFilterDialog::AViewFilterDialog;

    const ADWordArray& checked() const { return checkedIds; }
    const ADWordArray& unchecked() const { return m_uncheckedIds; }
    const AViewAttrFilter* saved() const { return m_savedFilter.get(); }
    ACheckTree& tree() { return m_tree; }
};

inline ACondition& conditionAt(const AObArray& conditions, int place) {
    return dynamic_cast<ACondition&>(*conditions[place]);
}

// "RGB Color/red used", by the path; "[ARGBColorItem]" behind the entry of a class. In the list's order.
inline std::vector<std::string> told(const ACheckPageBase& page) {
    std::vector<std::string> lines;
    for (int place = 0; place < page.getConditions().GetSize(); ++place) {
        const ACondition& condition = conditionAt(page.getConditions(), place);
        std::string line = condition.path.toUtf8();
        const auto* refers = dynamic_cast<const AReferCondition*>(&condition);
        if (!refers || !refers->getReferItem()) {
            for (const AString& name : condition.getClassNames()) line += " [" + name.toUtf8() + ']';
        }
        if (condition.inDocument) line += " used";
        lines.push_back(line);
    }
    return lines;
}

// The rules as nested loops, over conditions of its own.
class PlainEntries {
public:
    std::vector<Condition> held;
    std::vector<DWORD> checked, unchecked;

    void addColorClasses();
    void addDocumentColors(ADatabase& database);
    void addReferItem(AReferItem* item);
    void add(Condition added);
    void sort();
    void load(const AViewAttrFilter* filter);
};

}  // namespace test
