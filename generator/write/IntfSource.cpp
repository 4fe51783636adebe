#include "write/Emit.h"
#include "write/Operations.h"
#include "write/forms/PropertyForm.h"

namespace zelgen {
namespace {

std::set<std::string> headersOf(Class const & of) {
    std::set<std::string> headers{"ZEL/metamodel/PropertySupport.h", "ZEL/sequences/SequenceField.h"};
    std::set<Type const *> types;
    for (Property const & p : of.own) {
        types.insert(p.type);
        if (p.making == Making::Extension) {
            headers.insert("ZEL/metamodel/StereotypeObject.h");
        }
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
        operationText::collectTypes(operation, types);
    }
    for (Type const * const type : types) {
        headers.insert(Emission::valueHeader(*type));
    }
    return headers;
}

} // namespace

std::string emitIntfSource(Emission const & emission, Class const & of) {
    Printer const & print = emission.print;
    std::vector<std::string> members;
    for (Property const & p : of.own) {
        members.push_back(PropertyForm::of(p).definitions(print, p));
    }
    for (auto const & [redefined, by] : of.redefinitions) {
        members.push_back(PropertyForm::of(*redefined).forwardDefinitions(print, of, *redefined, *by));
    }
    for (View const & view : of.views) {
        members.push_back(viewDefinition(print, of, view));
    }
    for (Operation const & operation : of.operations) {
        members.push_back(operationText::definition(print, of, operation));
    }
    members.push_back(factoryDefinitions(emission, of));
    std::set<std::string> headers = headersOf(of);
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
                  {"headers", Emission::includes(headers)},
                  {"ns", of.home->cppNamespace},
                  {"X", of.name},
                  {"members", Printer::blocks(members)}});
}

} // namespace zelgen
