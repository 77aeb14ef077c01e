#include "select/criteria.h"

#include <algorithm>
#include <unordered_map>

#include "conditions/container_conditions.h"
#include "conditions/fill_condition.h"
#include "conditions/object_condition.h"
#include "conditions/stroke_condition.h"
#include "kzcore/document/object_paint.h"
#include "select/container_answers.h"
#include "select/object_walk.h"

namespace {

template <class Condition>
using List = std::vector<Condition*>;

template <class Condition>
bool anyMatches(const List<Condition>& conditions, ARoot* item) {
    return std::any_of(conditions.begin(), conditions.end(),
                       [item](const Condition* one) { return one->isMatch(item) != 0; });
}

// Whether an object's class is one of the conditions'.
template <class Condition>
class ClassNames {
public:
    explicit ClassNames(const List<Condition>& conditions) : m_conditions(conditions) {}

    bool contain(const AString& className) {
        if (const bool* known = m_known.find(&className)) return *known;
        return m_known[&className] =
                   std::any_of(m_conditions.begin(), m_conditions.end(),
                               [&](const Condition* one) { return one->hasClass(className) != 0; });
    }

private:
    List<Condition> m_conditions;
    PointerTable<bool> m_known;  // by the address of the name, which all objects of a class share
};

class Layers : public Criteria::Kind {
public:
    explicit Layers(const List<ALayerCondition>& conditions) : m_classes(conditions) {}

    bool accepts(AObject& object) override {
        if (object.asLayer()) return m_classes.contain(object.getClassName());
        return m_answers.ask(object.getParent(), [this](AParent& container) -> std::optional<bool> {
            if (!container.asLayer()) return {};
            return m_classes.contain(container.getClassName());
        });
    }

private:
    ClassNames<ALayerCondition> m_classes;
    ContainerAnswers m_answers;
};

class Effects : public Criteria::Kind {
public:
    explicit Effects(const List<AEffectCondition>& conditions) : m_classes(conditions) {}

    bool accepts(AObject& object) override {
        if (const std::optional<bool> decided = decide(object)) return *decided;
        return m_answers.ask(object.getParent(), [this](AParent& container) { return decide(container); });
    }

private:
    std::optional<bool> decide(AObject& object) {
        if (object.asLayer()) return false;
        if (m_classes.contain(object.getClassName())) return true;
        return {};
    }

    ClassNames<AEffectCondition> m_classes;
    ContainerAnswers m_answers;
};

class Objects : public Criteria::Kind {
public:
    explicit Objects(List<AObjectCondition> conditions) : m_conditions(std::move(conditions)) {}

    bool accepts(AObject& object) override {
        const AString& name = object.getClassInfo().name;
        OfClass& of = m_classes[&name];
        if (!of.isKnown) learn(of, name);
        return of.all || anyMatches(of.subKinds, &object);
    }

private:
    struct OfClass {
        bool isKnown = false;
        bool all = false;
        List<AObjectCondition> subKinds;
    };

    void learn(OfClass& of, const AString& name) {
        of.isKnown = true;
        for (AObjectCondition* one : m_conditions) {
            if (!one->hasClass(name)) continue;
            if (one->classifier)
                of.subKinds.push_back(one);
            else
                of.all = true;
        }
    }

    List<AObjectCondition> m_conditions;
    PointerTable<OfClass> m_classes;  // by the address of the name
};

// A fill is decided by its brush item, so each item is decided once. Of the conditions on one brush item,
// only those can match that are about the same item or about a colour of the same name.
class Fills : public Criteria::Kind {
public:
    explicit Fills(const List<AFillCondition>& conditions) {
        for (AFillCondition* one : conditions) {
            m_noFill = m_noFill || one->getClassNames().IsEmpty();
            if (!isOnOneFill(*one))
                m_others.push_back(one);
            else if (const AColorItem* color = colorOf(one->brushItem))
                m_byName[kzutil::WideString(color->getName().view())].push_back(one);
            else
                m_byItem[one->brushItem].push_back(one);
        }
    }

    bool accepts(AObject& object) override {
        const ABrush* fill = brushOf(object);
        if (!fill) return m_noFill;
        if (const bool* known = m_answers.find(fill)) return *known;
        return m_answers[fill] = fill->getBrushItem() && decide(fill->getBrushItem());
    }

private:
    static bool isOnOneFill(const AFillCondition& one) {
        return one.brushItem && one.getClassNames().GetSize() == 1 &&
               one.getClassNames()[0] == one.brushItem->getClassName();
    }

    bool decide(ABrushItem* item) const {
        if (anyMatches(m_others, item)) return true;
        if (const auto found = m_byItem.find(item); found != m_byItem.end())
            return anyMatches(found->second, item);
        const AColorItem* color = colorOf(item);
        if (!color) return false;
        const auto found = m_byName.find(kzutil::WideString(color->getName().view()));
        return found != m_byName.end() && anyMatches(found->second, item);
    }

    bool m_noFill = false;
    List<AFillCondition> m_others;
    std::unordered_map<kzutil::WideString, List<AFillCondition>> m_byName;
    std::unordered_map<const ABrushItem*, List<AFillCondition>> m_byItem;
    PointerTable<bool> m_answers;  // by brush
};

// A stroke is decided by its pen item. Conditions on one colour are about that very item.
class Strokes : public Criteria::Kind {
public:
    explicit Strokes(const List<AStrokeCondition>& conditions) {
        for (AStrokeCondition* one : conditions) {
            m_noStroke = m_noStroke || one->getClassNames().IsEmpty();
            (one->colorItem ? m_byColor[one->colorItem] : m_others).push_back(one);
        }
    }

    bool accepts(AObject& object) override {
        const APen* pen = penOf(object);
        if (!pen) return m_noStroke;
        if (const bool* known = m_answers.find(pen)) return *known;
        return m_answers[pen] = decide(object, pen->getPenItem());
    }

private:
    bool decide(AObject& object, const APenItem* item) const {
        if (anyMatches(m_others, &object)) return true;  // "No stroke" among them
        if (!item) return false;
        const auto found = m_byColor.find(item->getColorItem());
        return found != m_byColor.end() && anyMatches(found->second, &object);
    }

    bool m_noStroke = false;
    List<AStrokeCondition> m_others;
    std::unordered_map<const AColorItem*, List<AStrokeCondition>> m_byColor;
    PointerTable<bool> m_answers;  // by pen
};

template <class Kind, class Condition>
void addKind(const AObArray& conditions, std::vector<std::unique_ptr<Criteria::Kind>>& kinds) {
    List<Condition> found;
    for (ARoot* entry : conditions) {
        if (auto* one = dynamic_cast<Condition*>(entry)) found.push_back(one);
    }
    if (!found.empty()) kinds.push_back(std::make_unique<Kind>(found));
}

}  // namespace

Criteria::Criteria(const AObArray& conditions) {
    addKind<Layers, ALayerCondition>(conditions, m_kinds);
    addKind<Objects, AObjectCondition>(conditions, m_kinds);
    addKind<Fills, AFillCondition>(conditions, m_kinds);
    addKind<Strokes, AStrokeCondition>(conditions, m_kinds);
    addKind<Effects, AEffectCondition>(conditions, m_kinds);
}

Criteria::~Criteria() = default;

bool Criteria::accepts(AObject& object) {
    return std::all_of(m_kinds.begin(), m_kinds.end(),
                       [&](const std::unique_ptr<Kind>& kind) { return kind->accepts(object); });
}
