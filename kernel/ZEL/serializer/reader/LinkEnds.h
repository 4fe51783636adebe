#pragma once

#include <ZEL/metamodel/ClassObject.h>

#include <cstddef>
#include <vector>

namespace ZEL::Serializer {

struct MetaProperty;

/// What the files of a run list at the ends of links that have two, both of which may be in the files.
///
/// Setting one end changes the other: the end that is read first decides the order at both, and a single-valued end
/// leaves the object it belonged to. So the order at each end is restored once all links are set.
class LinkEnds {
public:
    /// The file lists `target` in `property` of `object`. Calls come in the order of the files.
    void note(ClassObject const & object, MetaProperty const & property, ClassObject const & target);
    /// Makes each end hold what was listed, in that order, and then what it holds beyond that.
    void restore() const;
    void clear() noexcept;

private:
    /// What an object lists in one go.
    struct Run {
        ClassObject object;
        MetaProperty const * property = nullptr;
        std::size_t firstTarget = 0;
        std::size_t count = 0;
    };

    static void restoreOne(ClassObject const & object, MetaProperty const & property,
                           std::vector<ClassObject> const & listed);

    std::vector<Run> fRuns; ///< the last one may still grow
    std::vector<ClassObject> fTargets;
};

} // namespace ZEL::Serializer
