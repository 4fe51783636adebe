#pragma once

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/sequences/Sequence.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace ZEL::tests {

/// Every numbered object is either contained, and then among the containees of its container, or unparented.
inline void expectOneTree(Model const & in) {
    std::set<ClassObject> unparented;
    for (ClassObject const root : in.getUnparented()) {
        EXPECT_TRUE(unparented.insert(root).second);
        EXPECT_TRUE(root.isValid());
    }
    for (int id = 2; id < in.getNextIdValue(); ++id) {
        ClassObject const object = in.getObjectById(Integer(id));
        if (!object.isValid()) {
            EXPECT_EQ(0U, unparented.count(object)) << id;
            continue;
        }
        EXPECT_EQ(object.hasContainerZEL() ? 0U : 1U, unparented.count(object)) << id;
        if (object.hasContainerZEL()) {
            auto const containees = object.getContainerZEL().getContaineeZELs().toVector();
            EXPECT_EQ(1, std::count(containees.begin(), containees.end(), object)) << id;
        }
    }
}

} // namespace ZEL::tests
