#pragma once

#include <ZEL/base/SoleOwner.h>
#include <ZEL/metamodel/ClassObject.h>

#include <cstddef>
#include <iterator>

namespace ZEL {

/// A walk over an object and all that it contains, stereotype instances too: each object before what it contains, and in
/// the order of `getContaineeZELs`. Of a model these are the objects that its file holds: neither the factory nor
/// objects without a container.
///
///     for (ImmutableClassObject const & object : ContentsWalk(package)) { ... }
///
/// One pass, in the deviant of the root's handle, without recursion, in constant time for each object; it needs room for
/// the objects between the root and the present one alone. The model may be written on the way: the walk takes each
/// object's contents as they are when it comes to them, and passes over objects that have ended since, with what is left
/// of their contents. An object that is moved meanwhile may be met twice or not at all.
class ZEL_API ContentsWalk {
public:
    class Iterator;
    /// Where all walks end.
    struct End {};

    /// At the root. Throws what a read of the root throws if it is not valid.
    explicit ContentsWalk(ImmutableClassObject root);
    ContentsWalk(ContentsWalk &&) noexcept;
    ContentsWalk & operator=(ContentsWalk &&) noexcept;
    ~ContentsWalk();

    /// The object that the walk is at; invalid at the end. It may be kept by copying the handle.
    [[nodiscard]] ImmutableClassObject const & current() const noexcept { return fCurrent; }
    [[nodiscard]] bool isAtEnd() const noexcept { return fIsAtEnd; }
    /// Goes to the next object; false if there is none. Throws
    /// "object accessed after its model has been destroyed" and
    /// "object accessed after its deviant has been removed"; it is at the end then.
    bool next();
    /// Passes over what the present object contains.
    void skipContents() noexcept { fSkips = true; }

    /// At the present object, for a loop. The walk must outlive it.
    [[nodiscard]] Iterator begin();
    [[nodiscard]] End end() const noexcept { return {}; }

private:
    class Levels;

    internal::SoleOwner<Levels> fLevels;
    ImmutableClassObject fCurrent;
    bool fIsAtEnd = false;
    bool fSkips = false;
};

class ContentsWalk::Iterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = ImmutableClassObject;
    using difference_type = std::ptrdiff_t;
    using pointer = ImmutableClassObject const *;
    using reference = ImmutableClassObject const &;

    explicit Iterator(ContentsWalk & walk) noexcept : fWalk(&walk) {}

    [[nodiscard]] ImmutableClassObject const & operator*() const noexcept { return fWalk->current(); }
    [[nodiscard]] ImmutableClassObject const * operator->() const noexcept { return &fWalk->current(); }
    Iterator & operator++() {
        fWalk->next();
        return *this;
    }
    void operator++(int) { fWalk->next(); }
    friend bool operator==(Iterator const & place, End) noexcept { return place.fWalk->isAtEnd(); }

private:
    ContentsWalk * fWalk;
};

inline ContentsWalk::Iterator ContentsWalk::begin() { return Iterator(*this); }

} // namespace ZEL
