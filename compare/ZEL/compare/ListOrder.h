#pragma once

#include <ZEL/compare/ComparedClass.h>

#include <functional>
#include <vector>

namespace ZEL::Compare {

/// Three states of a list, all in objects of the one that is to be put in order.
struct ListStates {
    std::vector<ObjectIntf *> before; ///< what both others come from
    std::vector<ObjectIntf *> ours;   ///< as it stands, with all that it is to hold
    std::vector<ObjectIntf *> theirs; ///< the list that it follows, as far as `ours` has it
};

/// `ours` in its order, or that of `theirs` if `isTheirs`, where what is new in `theirs` stands after the element that
/// it follows there. New elements of both at one place come in the order of `isLess`, whichever side they are from.
/// Linear.
[[nodiscard]] std::vector<ObjectIntf *> inOrder(ListStates const & states, bool isTheirs,
                                                std::function<bool(ObjectIntf *, ObjectIntf *)> const & isLess);

} // namespace ZEL::Compare
