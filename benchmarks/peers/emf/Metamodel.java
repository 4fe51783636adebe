import org.eclipse.emf.ecore.*;

/**
 * One of the metamodels that are measured: trees of schemas, tables and columns. A process loads one subclass only, so
 * that calls through this class cost nothing.
 */
abstract class Metamodel {
    static Metamodel of(String name) {
        return name.equals("lean") ? new LeanMetamodel() : new EcoreMetamodel();
    }

    abstract EObject makeTop(String name);
    abstract EObject addSchema(EObject top, String name);
    /** An object in the schema that can be a column's type. */
    abstract EObject addType(EObject schema, String name);
    abstract EObject addTable(EObject schema, String name);
    abstract EObject addColumn(EObject table, String name);
    abstract void setType(EObject column, EObject type);
    abstract EStructuralFeature nameFeature();

    /** An array of the type that the two operations below take, so that their loops do without casts. */
    abstract EObject[] makeArray(int size);
    /** The number of objects that have a name, each asked by its typed operation. */
    abstract int countNamed(EObject[] objects);
    abstract void setNames(EObject[] objects, String[] names);
    abstract void setName(EObject object, String name);

    /** Packages, classes and attributes of Ecore; data types are the types. */
    private static final class EcoreMetamodel extends Metamodel {
        private static final EcoreFactory FACTORY = EcoreFactory.eINSTANCE;

        @Override EObject makeTop(String name) {
            EPackage made = FACTORY.createEPackage();
            made.setName(name);
            return made;
        }

        @Override EObject addSchema(EObject top, String name) {
            EPackage made = FACTORY.createEPackage();
            made.setName(name);
            ((EPackage) top).getESubpackages().add(made);
            return made;
        }

        @Override EObject addType(EObject schema, String name) {
            EDataType made = FACTORY.createEDataType();
            made.setName(name);
            ((EPackage) schema).getEClassifiers().add(made);
            return made;
        }

        @Override EObject addTable(EObject schema, String name) {
            EClass made = FACTORY.createEClass();
            made.setName(name);
            ((EPackage) schema).getEClassifiers().add(made);
            return made;
        }

        @Override EObject addColumn(EObject table, String name) {
            EAttribute made = FACTORY.createEAttribute();
            made.setName(name);
            ((EClass) table).getEStructuralFeatures().add(made);
            return made;
        }

        @Override void setType(EObject column, EObject type) {
            ((EAttribute) column).setEType((EDataType) type);
        }

        @Override EStructuralFeature nameFeature() {
            return EcorePackage.Literals.ENAMED_ELEMENT__NAME;
        }

        @Override EObject[] makeArray(int size) {
            return new ENamedElement[size];
        }

        @Override int countNamed(EObject[] objects) {
            int named = 0;
            for (ENamedElement object : (ENamedElement[]) objects) {
                if (object.getName() != null) {
                    named++;
                }
            }
            return named;
        }

        @Override void setNames(EObject[] objects, String[] names) {
            int i = 0;
            for (ENamedElement object : (ENamedElement[]) objects) {
                object.setName(names[i++]);
            }
        }

        @Override void setName(EObject object, String name) {
            ((ENamedElement) object).setName(name);
        }
    }

    /** The classes of Lean; tables without columns are the types. */
    private static final class LeanMetamodel extends Metamodel {
        @Override EObject makeTop(String name) {
            Lean.Schema made = new Lean.SchemaImpl();
            made.setName(name);
            return made;
        }

        @Override EObject addSchema(EObject top, String name) {
            Lean.Schema made = new Lean.SchemaImpl();
            made.setName(name);
            ((Lean.Schema) top).getParts().add(made);
            return made;
        }

        @Override EObject addType(EObject schema, String name) {
            return addTable(schema, name);
        }

        @Override EObject addTable(EObject schema, String name) {
            Lean.Table made = new Lean.TableImpl();
            made.setName(name);
            ((Lean.Schema) schema).getTables().add(made);
            return made;
        }

        @Override EObject addColumn(EObject table, String name) {
            Lean.Column made = new Lean.ColumnImpl();
            made.setName(name);
            ((Lean.Table) table).getColumns().add(made);
            return made;
        }

        @Override void setType(EObject column, EObject type) {
            ((Lean.Column) column).setType((Lean.Table) type);
        }

        @Override EStructuralFeature nameFeature() {
            return Lean.NAMED_NAME;
        }

        @Override EObject[] makeArray(int size) {
            return new Lean.Named[size];
        }

        @Override int countNamed(EObject[] objects) {
            int named = 0;
            for (Lean.Named object : (Lean.Named[]) objects) {
                if (object.getName() != null) {
                    named++;
                }
            }
            return named;
        }

        @Override void setNames(EObject[] objects, String[] names) {
            int i = 0;
            for (Lean.Named object : (Lean.Named[]) objects) {
                object.setName(names[i++]);
            }
        }

        @Override void setName(EObject object, String name) {
            ((Lean.Named) object).setName(name);
        }
    }
}
