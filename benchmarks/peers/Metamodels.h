#pragma once

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/NamedElement.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Property.h>

#include <lean/Column.h>
#include <lean/LeanFactory.h>
#include <lean/LeanModel.h>
#include <lean/Named.h>
#include <lean/Schema.h>
#include <lean/Table.h>

namespace peers {

// The two metamodels that are measured, under the same names. Both make trees of schemas, tables and columns; a
// column's type is a table.

/// Packages, classes and properties of the library itself. Ecore stands beside it.
struct BuiltInMetamodel {
    using Model = ZEL::MetaModel;
    using Factory = ZEL::Factory;
    using Named = ZEL::NamedElement;
    using Schema = ZEL::Package;
    using Table = ZEL::Class;
    using Column = ZEL::Property;

    static Model makeModel() { return Factory::createNewModel(); }
    static Schema makeSchema(Factory const & factory) { return factory.createPackage(); }
    static Table makeTable(Factory const & factory) { return factory.createClass(); }
    static Column makeColumn(Factory const & factory) { return factory.createProperty(); }
    static void setTop(Model const & model, Schema const & top) { model.setTopPackage(top); }
    static void add(Schema const & to, Schema const & part) { to.getPackagedElements().push_back(part); }
    static void add(Schema const & to, Table const & part) { to.getPackagedElements().push_back(part); }
    static void add(Table const & to, Column const & part) { to.getOwnedAttributes().push_back(part); }
};

/// The four classes of `lean.metamodel.yaml`. Those of `emf/Lean.java` stand beside it.
struct LeanMetamodel {
    using Model = lean::LeanModel;
    using Factory = lean::LeanFactory;
    using Named = lean::Named;
    using Schema = lean::Schema;
    using Table = lean::Table;
    using Column = lean::Column;

    static Model makeModel() { return Factory::createNewModel(); }
    static Schema makeSchema(Factory const & factory) { return factory.createSchema(); }
    static Table makeTable(Factory const & factory) { return factory.createTable(); }
    static Column makeColumn(Factory const & factory) { return factory.createColumn(); }
    static void setTop(Model const & model, Schema const & top) { model.setTop(top); }
    static void add(Schema const & to, Schema const & part) { to.getParts().push_back(part); }
    static void add(Schema const & to, Table const & part) { to.getTables().push_back(part); }
    static void add(Table const & to, Column const & part) { to.getColumns().push_back(part); }
};

} // namespace peers
