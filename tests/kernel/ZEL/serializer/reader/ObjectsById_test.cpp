#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/serializer/reader/ObjectsById.h>

#include <gtest/gtest.h>

namespace ZEL::tests {
namespace {

using Serializer::ObjectsById;

TEST(ObjectsById, FindsTheLastObjectOfEachId) {
    MetaModel const model = Factory::createNewModel();
    model.beginTransaction();
    ObjectsById objects;
    EXPECT_TRUE(objects.empty());
    // In the array, beside it for another head or form, and for a number that only a larger array would take.
    char const * const ids[] = {"_zel_u_3", "_zel_u_4", "_zel_u_003", "_zel_v_3", "E_3", "E", "_zel_u_2000000000"};
    std::vector<ClassObject> entered;
    for (bool const isFirst : {true, false}) {
        entered.clear();
        for (char const * const id : ids) {
            entered.emplace_back(model.getFactoryFactory().createClass());
            EXPECT_EQ(isFirst, objects.enter(ObjectId(id), entered.back())) << id;
        }
        for (std::size_t i = 0; i < entered.size(); ++i) {
            ASSERT_NE(nullptr, objects.find(ObjectId(ids[i]))) << ids[i];
            EXPECT_EQ(entered[i], *objects.find(ObjectId(ids[i]))) << ids[i];
        }
    }
    for (char const * const id : {"_zel_u_5", "_zel_u_", "_zel_w_3", "3", "", "_zel_u_1999999999"}) {
        EXPECT_EQ(nullptr, objects.find(ObjectId(id))) << id;
    }
}

} // namespace
} // namespace ZEL::tests
