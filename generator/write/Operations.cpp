#include "write/Operations.h"

#include <vector>

namespace zelgen::operationText {
namespace {

std::string cppType(Type const * type, SignatureType const & form, bool immutable) {
    if (type == nullptr) {
        return form.name == "Deviant" ? "ZEL::Deviant" : "void";
    }
    bool const isImmutable = immutable || form.immutable;
    std::string const name = type->cppName(isImmutable);
    return form.sequence ? (isImmutable ? "ZEL::ImmutableSequence<" : "ZEL::Sequence<") + name + '>' : name;
}

std::string result(Operation const & operation, bool immutable) {
    return cppType(operation.result, operation.resultForm, immutable);
}

std::string parameters(Operation const & operation, bool named) {
    std::vector<std::string> texts;
    for (Operation::Parameter const & parameter : operation.parameters) {
        texts.push_back(cppType(parameter.type, parameter.form, false) + " const &" +
                        (named ? ' ' + parameter.name : ""));
    }
    return Printer::join(texts, ", ");
}

std::string arguments(Operation const & operation) {
    std::string text;
    for (Operation::Parameter const & parameter : operation.parameters) {
        text += ", " + parameter.name;
    }
    return text;
}

std::string withDeviant(std::string const & deviant, Operation const & operation, bool named) {
    std::string const rest = parameters(operation, named);
    return deviant + (rest.empty() ? "" : ", " + rest);
}

std::string nodiscard(Operation const & operation) {
    return operation.result == nullptr && operation.resultForm.name == "void" ? "" : "[[nodiscard]] ";
}

} // namespace

std::string declaration(Printer const & print, Operation const & o) {
    return print(R"(
$nodiscard$$virtual$$R$ $name$($parameters$)$const$$override$;
)",
                 {{"nodiscard", nodiscard(o)},
                  {"virtual", o.overrides ? "" : "virtual "},
                  {"R", result(o, false)},
                  {"name", o.name},
                  {"parameters", withDeviant("ZEL::Deviant deviant", o, true)},
                  {"const", o.isConst ? " const" : ""},
                  {"override", o.overrides ? " override" : ""}});
}

std::string definition(Printer const & print, Operation const & o) {
    if (o.body != OperationBody::Unimplemented) {
        return "";
    }
    return print(R"(
$R$ $X$Intf::$name$($parameters$)$const$ {
    ZEL::raiseUnimplemented("The $X$.$name$ operation is not yet implemented!");
}
)",
                 {{"R", result(o, false)},
                  {"name", o.name},
                  {"parameters", withDeviant("ZEL::Deviant", o, false)},
                  {"const", o.isConst ? " const" : ""}});
}

bool isOnHandle(Operation const & o, bool immutable) {
    bool const hasMutableResult = o.result != nullptr && o.result->kind == TypeKind::Class && !o.resultForm.immutable;
    return immutable ? o.isConst : !o.isConst || hasMutableResult;
}

std::string handleOperation(Printer const & print, Operation const & o, bool immutable) {
    return print(R"(
template <class R = $R$> $nodiscard$R $name$($parameters$) const {
    return implementationFor<R>()->$name$(getDeviant()$arguments$);
}
)",
                 {{"nodiscard", nodiscard(o)},
                  {"R", result(o, immutable)},
                  {"name", o.name},
                  {"parameters", parameters(o, true)},
                  {"arguments", arguments(o)}});
}

void collectTypes(Operation const & operation, std::set<Type const *> & types) {
    if (operation.result != nullptr) {
        types.insert(operation.result);
    }
    for (Operation::Parameter const & parameter : operation.parameters) {
        types.insert(parameter.type);
    }
}

} // namespace zelgen::operationText
