// An array of pointers to objects, which it does not own. An index outside it raises CInvalidArgException.
#pragma once

#include <vector>

#include "platform/afx/exceptions.h"
#include "platform/afx/object.h"

class CObArray : public CObject {
public:
    INT_PTR GetSize() const { return static_cast<INT_PTR>(m_objects.size()); }
    INT_PTR GetCount() const { return GetSize(); }
    INT_PTR GetUpperBound() const { return GetSize() - 1; }
    BOOL IsEmpty() const { return m_objects.empty(); }

    CObject* GetAt(INT_PTR index) const { return m_objects[checked(index)]; }
    void SetAt(INT_PTR index, CObject* object) { m_objects[checked(index)] = object; }
    CObject*& operator[](INT_PTR index) { return m_objects[checked(index)]; }
    CObject* operator[](INT_PTR index) const { return GetAt(index); }

    // The new object's index.
    INT_PTR Add(CObject* object) {
        m_objects.push_back(object);
        return GetUpperBound();
    }
    // At the end, too.
    void InsertAt(INT_PTR index, CObject* object) {
        if (index < 0 || index > GetSize()) AfxThrowInvalidArgException("index outside the array");
        m_objects.insert(m_objects.begin() + index, object);
    }
    void RemoveAt(INT_PTR index, INT_PTR count = 1) {
        if (index < 0 || count < 0 || count > GetSize() - index)
            AfxThrowInvalidArgException("index outside the array");
        m_objects.erase(m_objects.begin() + index, m_objects.begin() + index + count);
    }
    void RemoveAll() { m_objects.clear(); }

private:
    std::size_t checked(INT_PTR index) const {
        if (index < 0 || index >= GetSize()) AfxThrowInvalidArgException("index outside the array");
        return static_cast<std::size_t>(index);
    }

    std::vector<CObject*> m_objects;
};
