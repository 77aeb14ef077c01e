// The host's arrays: growing sequences with the access operations that hosts and plug-ins know.
//
// Indexes run from 0; one outside the array raises std::out_of_range. A size never set counts as 0. The
// element argument of the constructors is the host's reserved growth hint, 0 for the default.
#pragma once

#include <stdexcept>
#include <utility>
#include <vector>

#include "kzutil/root.h"

template <class T>
class ATArray {
public:
    ATArray() = default;
    explicit ATArray(int /*growth*/) {}

    int GetSize() const { return static_cast<int>(m_elements.size()); }
    bool IsEmpty() const { return m_elements.empty(); }
    // New elements are value-initialised; a negative size raises std::length_error.
    void SetSize(int size) { m_elements.resize(static_cast<std::size_t>(size)); }
    void RemoveAll() { m_elements.clear(); }

    const T& GetAt(int index) const { return m_elements.at(static_cast<std::size_t>(index)); }
    T& ElementAt(int index) { return m_elements.at(static_cast<std::size_t>(index)); }
    const T& operator[](int index) const { return GetAt(index); }
    T& operator[](int index) { return ElementAt(index); }
    void SetAt(int index, T element) { ElementAt(index) = std::move(element); }
    // Grows the array to hold the index.
    void SetAtGrow(int index, T element) {
        T& place = index < GetSize() ? ElementAt(index) : grownTo(index);
        place = std::move(element);
    }

    // The new element's index.
    int Add(T element) {
        m_elements.push_back(std::move(element));
        return GetSize() - 1;
    }
    // The index of the first appended element. Appending an array to itself doubles it.
    int Append(const ATArray& other) {
        const int first = GetSize();
        for (std::size_t i = 0, count = other.m_elements.size(); i < count; ++i) Add(other.m_elements[i]);
        return first;
    }
    void InsertAt(int index, T element) {
        m_elements.insert(m_elements.begin() + checked(index, GetSize()), std::move(element));
    }
    void RemoveAt(int index, int count = 1) {
        const int size = GetSize();
        const auto first = m_elements.begin() + checked(index, size - checked(count, size));
        m_elements.erase(first, first + count);
    }

    auto begin() const { return m_elements.begin(); }
    auto end() const { return m_elements.end(); }

private:
    static int checked(int index, int last) {
        if (index < 0 || index > last) throw std::out_of_range("array index");
        return index;
    }

    T& grownTo(int index) {
        m_elements.resize(static_cast<std::size_t>(index) + 1);
        return m_elements.back();
    }

    std::vector<T> m_elements;
};

// Objects are not owned.
using AObArray = ATArray<ARoot*>;
using AStringArray = ATArray<AString>;
using ADWordArray = ATArray<DWORD>;
