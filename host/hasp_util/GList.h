#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace HASP {

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
            fData = std::make_shared<std::vector<T>>(values);
        }
    }

    [[nodiscard]] std::size_t size() const noexcept { return fData ? fData->size() : 0; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] T const & operator[](std::size_t index) const noexcept { return (*fData)[index]; }
    [[nodiscard]] const_iterator begin() const noexcept { return fData ? fData->data() : nullptr; }
    [[nodiscard]] const_iterator end() const noexcept { return begin() + size(); }
    [[nodiscard]] bool isSharedWith(GList const & other) const noexcept { return fData == other.fData; }

    /// Gives this list elements of its own. Every operation that changes the list does so first.
    void detach() {
        if (!fData) {
            fData = std::make_shared<std::vector<T>>();
        } else if (fData.use_count() != 1) {
            fData = std::make_shared<std::vector<T>>(*fData);
        }
    }
    void set(std::size_t index, T value) {
        detach();
        (*fData)[index] = std::move(value);
    }
    /// Linear in the size of the list.
    void prepend(T value) { insert(0, std::move(value)); }
    void append(T value) {
        detach();
        fData->push_back(std::move(value));
    }
    void insert(std::size_t index, T value) {
        detach();
        fData->insert(fData->begin() + static_cast<std::ptrdiff_t>(index), std::move(value));
    }
    void erase(std::size_t index) {
        detach();
        fData->erase(fData->begin() + static_cast<std::ptrdiff_t>(index));
    }
    void clear() noexcept { fData.reset(); }

    friend bool operator==(GList const & left, GList const & right) {
        return left.fData == right.fData ||
               (left.size() == right.size() && (left.empty() || *left.fData == *right.fData));
    }

private:
    std::shared_ptr<std::vector<T>> fData;
};

} // namespace HASP
