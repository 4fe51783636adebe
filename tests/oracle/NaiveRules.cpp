// The properties that the naive model knows, kind by kind.

#include "NaiveModel.h"

namespace ZEL::tests::oracle {

namespace {

std::set<Kind> const kTypes{Kind::Class, Kind::Association};
std::set<Kind> const kNamespaces{Kind::Package, Kind::Class, Kind::Association, Kind::Operation};
std::set<Kind> const kElements{Kind::Package,    Kind::Class,      Kind::Property,  Kind::Association,
                               Kind::Constraint, Kind::Expression, Kind::Operation, Kind::Comment};

ValueRule text(char const * property) { return {property, {"", "a", "b", "c", "d"}, "", "", false, false}; }
ValueRule flag(char const * property, char const * initial = "0") {
    return {property, {"0", "1"}, initial, "", true, true};
}
ValueRule bound(char const * property) { return {property, {"0", "1", "2", "3"}, "1", "1", true, false}; }
ValueRule literal(char const * property) { return {property, {"0", "1", "2", "3"}, "", "0", false, false}; }

EndRule contains(char const * property, std::set<Kind> accepts, bool isMany = true) {
    return {property, isMany, Form::Contained, std::move(accepts), ""};
}
EndRule refers(char const * property, std::set<Kind> accepts, bool isMany) {
    return {property, isMany, Form::OneEnded, std::move(accepts), ""};
}
EndRule links(char const * property, Kind accepts, bool isMany, char const * opposite) {
    return {property, isMany, Form::Linked, {accepts}, opposite};
}
EndRule rides(char const * property, std::set<Kind> accepts, char const * list) {
    return {property, false, Form::Riding, std::move(accepts), list};
}

EndRule const kRules = contains("ownedRule", {Kind::Constraint});
EndRule const kComments = contains("ownedComment", {Kind::Comment});

} // namespace

std::vector<ValueRule> const & valuesOf(Kind kind) {
    static std::map<Kind, std::vector<ValueRule>> const values{
        {Kind::Model, {}},
        {Kind::Package, {text("name"), text("uri"), literal("visibility")}},
        {Kind::Class, {text("name"), flag("isAbstract"), literal("visibility")}},
        {Kind::Property,
         {text("name"), text("default"), flag("isReadOnly"), flag("isUnique", "1"), bound("lower"), bound("upper"),
          literal("visibility")}},
        {Kind::Association, {text("name"), flag("isDerived")}},
        {Kind::Constraint, {text("name"), literal("visibility")}},
        {Kind::Expression, {text("name")}},
        {Kind::Operation, {text("name"), flag("isQuery")}},
        {Kind::Comment, {text("body")}}};
    return values.at(kind);
}

std::vector<EndRule> const & endsOf(Kind kind) {
    static std::map<Kind, std::vector<EndRule>> const ends{
        {Kind::Model, {refers("unparented", kElements, true)}},
        {Kind::Package,
         {contains("packagedElement",
                   {Kind::Package, Kind::Class, Kind::Association, Kind::Constraint, Kind::Expression}),
          kRules, kComments, rides("nestingPackage", {Kind::Package}, "packagedElement")}},
        {Kind::Class,
         {contains("ownedAttribute", {Kind::Property}), contains("ownedOperation", {Kind::Operation}), kRules,
          kComments, links("superClass", Kind::Class, true, "subClass"),
          links("subClass", Kind::Class, true, "superClass"), rides("package", {Kind::Package}, "packagedElement")}},
        {Kind::Property,
         {kComments, refers("type", kTypes, false), refers("redefinedProperty", {Kind::Property}, true),
          links("association", Kind::Association, false, "memberEnd"), rides("class", {Kind::Class}, "ownedAttribute"),
          rides("owningAssociation", {Kind::Association}, "ownedEnd")}},
        {Kind::Association,
         {contains("ownedEnd", {Kind::Property}), kRules, kComments,
          links("memberEnd", Kind::Property, true, "association"),
          rides("package", {Kind::Package}, "packagedElement")}},
        {Kind::Constraint,
         {contains("specification", {Kind::Expression}, false), kComments,
          refers("constrainedElement", kElements, true), rides("context", kNamespaces, "ownedRule")}},
        {Kind::Expression, {kComments, refers("type", kTypes, false)}},
        {Kind::Operation,
         {contains("precondition", {Kind::Constraint}), contains("postcondition", {Kind::Constraint}),
          contains("bodyCondition", {Kind::Constraint}, false), kRules, kComments,
          rides("class", {Kind::Class}, "ownedOperation")}},
        {Kind::Comment, {kComments, refers("annotatedElement", kElements, true)}}};
    return ends.at(kind);
}

EndRule const & endOf(Kind kind, std::string const & property) {
    for (EndRule const & rule : endsOf(kind)) {
        if (rule.property == property) {
            return rule;
        }
    }
    throw std::logic_error("no end " + property);
}

} // namespace ZEL::tests::oracle
