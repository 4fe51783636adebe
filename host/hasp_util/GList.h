#pragma once

#include <hasp_util/Export.h>

#include <cstddef>
#include <initializer_list>
#include <utility>
#include <vector>

namespace HASP {

namespace internal {

/// How many lists share some elements.
class HOST_API SharingCount {
public:
    void add() noexcept;
    /// Whether that was the last.
    [[nodiscard]] bool remove() noexcept;
    [[nodiscard]] bool isOne() const noexcept;

private:
    alignas(int) mutable int fCount = 1; ///< always as an atomic number, whose header is for the source
};

} // namespace internal

/// Array list with value semantics whose copies share their elements until one of them changes.
///
/// A copy costs one atomic increment. An empty list owns nothing. The first change of a shared list copies its elements
/// (`detach`), so do not keep iterators across a change. Indices are not checked.
template <class T> class GList {
public:
    using value_type = T;
    using const_iterator = T const *;

    GList() noexcept = default;
    GList(std::initializer_list<T> values) {
        if (values.size() != 0) {
            fData = new Shared{values, {}};
        }
    }
    GList(GList const & other) noexcept : fData(other.fData) {
        if (fData != nullptr) {
            fData->count.add();
        }
    }
    GList(GList && other) noexcept : fData(std::exchange(other.fData, nullptr)) {}
    GList & operator=(GList other) noexcept {
        std::swap(fData, other.fData);
        return *this;
    }
    ~GList() {
        if (fData != nullptr && fData->count.remove()) {
            delete fData;
        }
    }

    [[nodiscard]] std::size_t size() const noexcept { return fData != nullptr ? fData->elements.size() : 0; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] T const & operator[](std::size_t index) const noexcept { return fData->elements[index]; }
    [[nodiscard]] const_iterator begin() const noexcept { return fData != nullptr ? fData->elements.data() : nullptr; }
    [[nodiscard]] const_iterator end() const noexcept { return begin() + size(); }
    [[nodiscard]] bool isSharedWith(GList const & other) const noexcept { return fData == other.fData; }

    /// Gives this list elements of its own. Every operation that changes the list does so first.
    void detach() {
        if (fData == nullptr) {
            fData = new Shared;
        } else if (!fData->count.isOne()) {
            GList own;
            own.fData = new Shared{fData->elements, {}};
            *this = std::move(own);
        }
    }
    void set(std::size_t index, T value) {
        detach();
        fData->elements[index] = std::move(value);
    }
    /// Linear in the size of the list.
    void prepend(T value) { insert(0, std::move(value)); }
    void append(T value) {
        detach();
        fData->elements.push_back(std::move(value));
    }
    void insert(std::size_t index, T value) {
        detach();
        fData->elements.insert(fData->elements.begin() + static_cast<std::ptrdiff_t>(index), std::move(value));
    }
    void erase(std::size_t index) {
        detach();
        fData->elements.erase(fData->elements.begin() + static_cast<std::ptrdiff_t>(index));
    }
    void clear() noexcept { *this = GList(); }

    friend bool operator==(GList const & left, GList const & right) {
        return left.fData == right.fData ||
               (left.size() == right.size() && (left.empty() || left.fData->elements == right.fData->elements));
    }

private:
    struct Shared {
        std::vector<T> elements;
        internal::SharingCount count;
    };

    Shared * fData = nullptr; ///< null for an empty list that owns nothing
};

} // namespace HASP
