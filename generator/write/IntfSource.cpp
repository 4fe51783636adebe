#include "write/Emit.h"
#include "write/Operations.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

/// The headers of what the definitions name, and of the classes whose handles they convert without naming them.
std::set<std::string> headersOf(Class const & of, std::string const & members) {
    std::set<Type const *> types;
    for (Property const & p : of.own) {
        types.insert(p.type);
    }
    for (auto const & [redefined, by] : of.redefinitions) {
        types.insert({redefined->type, by->type});
    }
    for (View const & view : of.views) {
        types.insert(view.property->type);
        for (Property const * const part : view.parts) {
            types.insert(part->type);
        }
    }
    for (Operation const & operation : of.operations) {
        if (operation.body == OperationBody::Unimplemented) {
            operationText::collectTypes(operation, types);
        }
    }
    std::set<std::string> headers = Emission::supportFor(members);
    for (Type const * const type : types) {
        if (type->kind == TypeKind::Class || mentions(members, type->name)) {
            headers.insert(Emission::valueHeader(*type));
        }
    }
    if (mentions(members, "getAppliedStereotypeInstances")) {
        headers.insert("ZEL/metamodel/StereotypeObject.h");
    }
    return headers;
}

} // namespace

std::string emitIntfSource(Emission const & emission, Class const & of) {
    Printer const & print = emission.print;
    std::vector<std::string> blocks;
    for (Property const & p : of.own) {
        blocks.push_back(PropertyForm::of(p).definitions(emission.printerFor(p), p));
    }
    for (auto const & [redefined, by] : of.redefinitions) {
        blocks.push_back(
            PropertyForm::of(*redefined).forwardDefinitions(emission.printerFor(*redefined), *redefined, *by));
    }
    for (View const & view : of.views) {
        blocks.push_back(viewDefinition(emission.printerFor(*view.property), of, view));
    }
    for (Operation const & operation : of.operations) {
        blocks.push_back(operationText::definition(print, operation));
    }
    blocks.push_back(factoryDefinitions(emission, of));
    std::string const members = Printer::blocks(blocks);
    std::set<std::string> headers = headersOf(of, members);
    headers.merge(factoryHeaders(emission, of));
    return print(R"(
$banner$
#include <$header$>

$headers$

namespace $ns$::NSInterface {

ZEL::CooperativeVisitor::internal::ClassInfo const & $X$Intf::classInfo() {
    static auto const info = ZEL::CooperativeVisitor::internal::makeClassInfo<$X$Intf, ZEL::NSInterface::ObjectDomain>();
    return info;
}

$members$

} // namespace $ns$::NSInterface
)",
                 {{"banner", emission.banner(of.mark, "write/IntfSource.cpp")},
                  {"header", Emission::header(of, "Intf")},
                  {"headers", Emission::includes(headers, headersOfIntf(emission, of))},
                  {"members", members}});
}

} // namespace zelgen
