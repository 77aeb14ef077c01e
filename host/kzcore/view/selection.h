// ASelection: the selected objects of a view, in the order of selection, none twice.
//
// Each object carries a flag that tells whether it is selected, so adding costs constant time whatever the
// size. A document has one view and one selection.
#pragma once

#include <vector>

#include "kzcore/document/object.h"

class ADocument;

class ASelection {
public:
    explicit ASelection(ADocument& document) : m_document(document) {}

    int getCount() const { return static_cast<int>(m_objects.size()); }
    AObject* getAt(int index) const { return m_objects.at(static_cast<std::size_t>(index)); }
    const std::vector<AObject*>& getObjects() const { return m_objects; }
    bool contains(const AObject* object) const { return object->getObjectFlags(kObjectSelected) != 0; }

    // Non-zero when something is selected and all of it is of one class.
    int isHomogeneous() const;
    // Appends the selected objects to the list. Non-zero when there are any.
    int getSelectedChildren(AObList* children) const;

    // If `redraw` is non-zero, an operation redraws the handles immediately when the selection changes.

    // Empties the selection.
    void resetSelection(int redraw);
    // Adds what is not selected yet, in order. With `toggle`, what is selected already leaves instead.
    void addSelection(const AObList* objects, int toggle, int redraw);
    void addSelection(AObject* object);
    // Puts the selection into drawing order: master layers first, then layer by layer, bottom object first.
    void sortSelection(int redraw);

    // Replaces the selection by exactly these objects; the history's way back.
    void restore(std::vector<AObject*> objects) noexcept;

    // Grows with every change.
    unsigned long long getRevision() const { return m_revision; }
    // Grows whenever the handles have to be drawn anew at once.
    unsigned long long getRedrawCount() const { return m_redraws; }

private:
    void select(AObject* object);
    void change(int redraw);

    ADocument& m_document;
    std::vector<AObject*> m_objects;
    unsigned long long m_revision = 0;
    unsigned long long m_redraws = 0;
};
