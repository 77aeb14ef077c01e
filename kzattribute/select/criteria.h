// What the selection is to meet: conditions of one kind joined by OR, the kinds by AND. A kind without a
// condition restricts nothing.
//
//     Criteria criteria(ticked);
//     if (!criteria.isEmpty() && criteria.accepts(object)) …
//
// Answers as asking every condition of a kind would, but looks up those that an object can meet: by its
// class, its fill, its pen and the containers around it.
#pragma once

#include <memory>

#include "kzutil/arrays.h"

class AObject;

class Criteria {
public:
    // Of the conditions, those of the five kinds on layers, objects, fills, strokes and effects; others take
    // no part. They have to outlive the criteria, and the document may not change meanwhile.
    explicit Criteria(const AObArray& conditions);
    ~Criteria();
    Criteria(const Criteria&) = delete;
    Criteria& operator=(const Criteria&) = delete;

    bool isEmpty() const { return m_kinds.empty(); }
    bool accepts(AObject& object);

    // The conditions of one kind.
    class Kind {
    public:
        virtual ~Kind() = default;
        virtual bool accepts(AObject& object) = 0;
    };

private:
    std::vector<std::unique_ptr<Kind>>
        m_kinds;  // layer, object, fill, stroke, effect; none without a condition
};
