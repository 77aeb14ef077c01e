// ACondition: one entry of an attribute criterion, such as "is a rectangle" or "is filled with this red".
//
//     auto* red = new AReferCondition(_T("RGB Color/red"), redItem);
//     red->isMatch(item);              // a predicate over the host's objects and items
//     red->addToTree(tree);            // an entry of a check tree, whose data is the serial
//     if (red->hasCommonClass(*held))  // two entries of one path become one
//         held->merge(*red);
//
// kind              | accepts                                   | own field             | clones into
// ACondition        | nothing: it is only an entry of a tree    |                       | ACondition
// AObjectCondition  | objects by class, and by a sub-kind       | classifier, expectedId | ACondition
// AEffectCondition  | objects of a class, and what is inside    |                       | ACondition
// ALayerCondition   | objects by the class of their layer       |                       | ACondition
// AFillCondition    | objects and brush items by their fill     | brushItem             | ACondition
// AStrokeCondition  | objects by their stroke                   | colorItem             | ACondition
// AReferCondition   | colour and brush items                    | a counted item        | AReferCondition
//
// Five of the kinds clone into a plain condition: their clone is an entry of a tree and no predicate, whose
// items it might outlive. Conditions live as long as the page, dialog or filter that owns them and are never
// archived. They are made on the user-interface thread alone: the serial counter is a plain one.
#pragma once

#include <cstdint>

#include "base/item_path.h"
#include "kzutil/arrays.h"
#include "platform/afx/tree_ctrl.h"

class ACheckTree;

// The one bit of treeFlags: the item is expanded when it is inserted.
constexpr DWORD kTreeItemExpanded = 2;

class ACondition : public ARoot {
public:
    // A null class name leaves the list of class names empty. Consumes a serial, as every constructor of a
    // kind does that is not a copy.
    ACondition(const AString& itemPath, const WCHAR* className);
    // A copy keeps the serial of its source, which it is meant to replace; its treeFlags are 0, and a copied
    // kind has none of its own fields: who needs them sets them.
    ACondition(const ACondition& source);
    ACondition& operator=(const ACondition&) = delete;  // see assignBase

    // To the caller. An out-of-memory exception leaves nothing behind.
    virtual ACondition* clone() const;
    // Whether an object or item of the host satisfies the condition; null never does.
    virtual BOOL isMatch(ARoot* item) const;
    // Inserts the condition's item and gives it its picture; null when the tree takes no item.
    virtual HTREEITEM addToTree(ACheckTree& tree) const;
    // Takes in the class names and presence flags of another condition of the same kind and path; its other
    // fields are ignored. The new inDocument.
    virtual BOOL merge(const ACondition& other);
    // Whether the other condition is about the same as this one. The base asks for a class name in common:
    // two empty lists have none.
    virtual BOOL hasCommonClass(const ACondition& other) const;

    // Exact, case-sensitive. No class is called null.
    BOOL hasClass(const WCHAR* name) const;
    BOOL hasClass(const AString& name) const;

    // Makes the condition one of this path and class; inSelection, the serial and treeFlags stay.
    void reset(const AString& itemPath, const WCHAR* className);
    // Takes what a copy would take from the source: how an entry becomes a condition of another kind.
    void assignBase(const ACondition& source);

    // From 1 on. The check tree keeps its low 32 bits as the item's data.
    std::uint64_t getSerial() const { return m_serial; }
    // Takes serials and drops them: what making conditions and deleting them would leave behind.
    static void consumeSerials(std::uint64_t count = 1);
    // The host classes that the condition accepts, each once, in the order in which they came. None is how
    // "No fill" and "No stroke" are told.
    const AStringArray& getClassNames() const { return m_classNames; }

    // What the owner keeps here while it fills a page: 1 when an object of the document, or a selected one,
    // satisfies the condition.
    int inDocument = 0;
    int inSelection = 0;

private:
    std::uint64_t m_serial;

public:
    DWORD treeFlags = 0;  // kTreeItemExpanded or 0
    AItemPath path;       // of the tree item

protected:
    // The picture of the first class that has one.
    void setClassIcon(ACheckTree& tree, HTREEITEM item) const;

private:
    AStringArray m_classNames;
};
