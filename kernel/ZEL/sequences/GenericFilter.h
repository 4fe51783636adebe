#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/sequences/Ref.h>

#include <memory>
#include <utility>

namespace ZEL::Generic::filtered_sequence_internal {

/// What a filtered sequence shows of the sequence under it: a table of operations and the data that they need.
///
/// `filterGet` turns a stored element into the one that is shown; a null result hides it. `filterSet` turns a shown
/// element into the one to store; a null result says that the element cannot belong here. A pure transform never hides
/// anything, so that positions are the same above and below.
///
/// A plain value: copies share the data, which lives until `destroy` is called on one of them. The sequence that is
/// made with a filter does that.
class ZEL_API GenericFilter {
public:
    struct VTable {
        void (*destroy)(void * userData);
        Ref (*filterGet)(void * userData, Ref const & stored);
        Ref (*filterSet)(void * userData, Ref const & shown);
        bool filterGetIsAPureTransform;
    };

    GenericFilter() noexcept = default;
    GenericFilter(VTable const * table, void * userData) noexcept : fTable(table), fUserData(userData) {}

    [[nodiscard]] Ref filterGet(Ref const & stored) const { return fTable->filterGet(fUserData, stored); }
    [[nodiscard]] Ref filterSet(Ref const & shown) const { return fTable->filterSet(fUserData, shown); }
    [[nodiscard]] bool filterGetIsAPureTransform() const noexcept { return fTable->filterGetIsAPureTransform; }
    /// Whether elements are shown as they are stored.
    [[nodiscard]] bool isIdentity() const noexcept { return fTable->filterGet == &identity; }
    /// The `filterGet` of filters that show all elements unchanged.
    [[nodiscard]] static Ref identity(void * userData, Ref const & stored);
    void destroy() const {
        if (fTable != nullptr) {
            fTable->destroy(fUserData);
        }
    }

private:
    VTable const * fTable = nullptr;
    void * fUserData = nullptr;
};

/// A filter of two functions `Ref(Ref const &)`. `isPure`: `get` hides nothing.
template <class Get, class Set> GenericFilter makeFilter(bool isPure, Get get, Set set) {
    struct Data {
        Get get;
        Set set;

        static void destroy(void * data) { delete static_cast<Data *>(data); }
        static Ref filterGet(void * data, Ref const & stored) { return static_cast<Data *>(data)->get(stored); }
        static Ref filterSet(void * data, Ref const & shown) { return static_cast<Data *>(data)->set(shown); }
    };
    static constexpr GenericFilter::VTable pure{&Data::destroy, &Data::filterGet, &Data::filterSet, true};
    static constexpr GenericFilter::VTable hiding{&Data::destroy, &Data::filterGet, &Data::filterSet, false};
    return GenericFilter(isPure ? &pure : &hiding,
                         std::make_unique<Data>(Data{std::move(get), std::move(set)}).release());
}

/// Shows all there is, and takes only objects of the class. For a sequence that holds nothing else.
[[nodiscard]] ZEL_API GenericFilter takesOnly(CooperativeVisitor::internal::ClassInfo const & info);
/// Shows and takes only objects of the class. `info` must outlive the filter, as the result of `I::classInfo()` does.
[[nodiscard]] ZEL_API GenericFilter showsOnly(CooperativeVisitor::internal::ClassInfo const & info);

} // namespace ZEL::Generic::filtered_sequence_internal
