// A page over a check tree of the test's own.
#pragma once

#include "checkpage/check_page_base.h"
#include "checktree/fixture.h"
#include "conditions/support.h"

namespace test {

class Page final : public ACheckPageBase {
public:
    explicit Page(ACheckTree* tree) : m_tree(tree) {}
    ACheckTree* getTree() override { return m_tree; }

    using ACheckPageBase::allTypes;
    using ACheckPageBase::checkedIds;
    using ACheckPageBase::findCondition;
    using ACheckPageBase::showAll;

    // "path class class document selection" of every condition, in order.
    Names dump() const { return dumpOf(getConditions()); }
    static Names dumpOf(const AObArray& conditions) {
        Names lines;
        for (ARoot* entry : conditions) {
            const auto& condition = *static_cast<ACondition*>(entry);
            std::string line = condition.path.toUtf8();
            for (const std::string& name : namesOf(condition)) line += " " + name;
            lines.push_back(line + " " + std::to_string(condition.inDocument) +
                            std::to_string(condition.inSelection));
        }
        return lines;
    }
    Names paths() const { return pathsOf(getConditions()); }
    static Names pathsOf(const AObArray& conditions) {
        Names paths;
        for (ARoot* entry : conditions) paths.push_back(static_cast<ACondition*>(entry)->path.toUtf8());
        return paths;
    }

    // A plain condition that the document has; its place.
    ACondition& add(const char* path, const char* className = "AOval", int inDocument = 1,
                    int inSelection = 0) {
        auto* condition = new ACondition(AString::fromUtf8(path), AString::fromUtf8(className));
        condition->inDocument = inDocument;
        condition->inSelection = inSelection;
        addCondition(condition);
        return *condition;
    }

private:
    ACheckTree* m_tree;
};

}  // namespace test
