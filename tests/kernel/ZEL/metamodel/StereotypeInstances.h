#pragma once

#include "support/Castable.h"

#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/ClassTables.h>
#include <ZEL/metamodel/FactorySupport.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/Stereotype.h>
#include <ZEL/metamodel/StereotypeObject.h>

namespace ZEL::tests {

/// What a profile's generator makes of a stereotype without properties, by hand; `N` tells several apart.
template <int N> struct MarkIntf : virtual NSInterface::StereotypeObjectIntf {
    static ClassInfo const & classInfo() { return classInfoOf<MarkIntf>(); }
    static internal::ClassRuntime & runtime() {
        static internal::ClassRuntime runtime;
        return runtime;
    }
    static internal::ClassDescriptor const & descriptor() noexcept;
};

template <class Core, int N> struct MarkPart : Core, virtual MarkIntf<N> {};

template <class Self, class Core, int N>
using CastableMark = Castable<Self, MarkPart<Core, N>, MarkIntf<N>, NSInterface::StereotypeObjectIntf>;

template <int N> struct MarkState final : CastableMark<MarkState<N>, internal::StateCore, N> {
    [[nodiscard]] internal::ClassDescriptor const & internal_stateDescriptor() const noexcept override {
        return MarkIntf<N>::descriptor();
    }
    void assign(MarkState const & other) { this->assignCore(other); }
};

template <int N> struct MarkBody final : CastableMark<MarkBody<N>, internal::BodyCore, N> {
    [[nodiscard]] internal::ClassDescriptor const & internal_descriptor() const noexcept override {
        return MarkIntf<N>::descriptor();
    }
};

template <int N> internal::ClassDescriptor const & MarkIntf<N>::descriptor() noexcept {
    static internal::ClassDescriptor const * const superClasses[] = {&StereotypeObjectIntf::descriptor()};
    static internal::FieldDescriptor const fields[] = {
        {&ClassObjectOperations::appliedStereotypeInstanceProperty(), &StereotypeObjectIntf::classInfo,
         &internal::stereotypeInstances, &internal::writableStereotypeInstances, nullptr, nullptr}};
    static internal::ClassDescriptor const descriptor{
        .name = "Mark",
        .orcaName = "TEST.Mark",
        .immutableOrcaName = "TEST.ImmutableMark",
        .classInfo = &MarkIntf::classInfo,
        .isAbstract = false,
        .builtAs = internal::BuiltAs::Stereotype,
        .superClasses = superClasses,
        .ownProperties = {},
        .clones = {},
        .fields = fields,
        .values = {},
        .createBody = &internal::createBody<MarkBody<N>>,
        .createState = &internal::createState<MarkState<N>>,
        .assignState = &internal::assignState<MarkState<N>>,
        .bodySize = sizeof(MarkBody<N>),
        .stateSize = sizeof(MarkState<N>),
        .runtime = &runtime(),
    };
    return descriptor;
}

/// A member of fixtures: the marks forget their metaclasses before these end with the model of the test.
struct MarksOfATest {
    MarksOfATest() = default;
    MarksOfATest(MarksOfATest const &) = delete;
    MarksOfATest & operator=(MarksOfATest const &) = delete;
    ~MarksOfATest() {
        MarkIntf<1>::runtime().unbind();
        MarkIntf<2>::runtime().unbind();
    }
};

/// A new instance of the `N`-th mark, whose metaclass is `stereotype`.
template <int N> StereotypeObject createMark(Stereotype const & stereotype) {
    MarkIntf<N>::runtime().bind(MarkIntf<N>::descriptor(), stereotype.getImplementation(), stereotype.getDeviant());
    Deviant const deviant = stereotype.getDeviant();
    auto & model = *stereotype.getImplementation()->internal_body()->internal_model();
    internal::BodyCore & body = internal::createObject(model, deviant, MarkIntf<N>::descriptor());
    return StereotypeObject(
        static_cast<NSInterface::StereotypeObjectIntf *>(body.cast(NSInterface::StereotypeObjectIntf::classInfo())),
        deviant);
}

} // namespace ZEL::tests
