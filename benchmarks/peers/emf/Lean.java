import java.util.Collection;
import org.eclipse.emf.common.notify.Notification;
import org.eclipse.emf.common.notify.NotificationChain;
import org.eclipse.emf.common.util.EList;
import org.eclipse.emf.ecore.*;
import org.eclipse.emf.ecore.impl.*;
import org.eclipse.emf.ecore.util.*;

/**
 * The metamodel of ../lean.metamodel.yaml in the form that EMF's own generator has, on the leanest of its base classes:
 * what EMF itself costs, where the classes of Ecore have many fields and caches.
 */
public final class Lean {
    static final int NAME = 0;
    static final int SCHEMA_PARTS = 1;
    static final int SCHEMA_TABLES = 2;
    static final int SCHEMA_WHOLE = 3;
    static final int TABLE_COLUMNS = 1;
    static final int TABLE_SCHEMA = 2;
    static final int COLUMN_TABLE = 1;
    static final int COLUMN_TYPE = 2;

    static final EPackage PACKAGE = EcoreFactory.eINSTANCE.createEPackage();
    static final EClass NAMED = addClass("Named", Named.class, null);
    static final EClass SCHEMA = addClass("Schema", Schema.class, NAMED);
    static final EClass TABLE = addClass("Table", Table.class, NAMED);
    static final EClass COLUMN = addClass("Column", Column.class, NAMED);
    static final EAttribute NAMED_NAME = EcoreFactory.eINSTANCE.createEAttribute();

    static {
        PACKAGE.setName("lean");
        PACKAGE.setNsPrefix("lean");
        PACKAGE.setNsURI("http://example.org/lean");
        NAMED_NAME.setName("name");
        NAMED_NAME.setEType(EcorePackage.Literals.ESTRING);
        NAMED.getEStructuralFeatures().add(NAMED_NAME);
        // In the order of the numbers above.
        EReference parts = addContents(SCHEMA, "parts", SCHEMA);
        EReference tables = addContents(SCHEMA, "tables", TABLE);
        addContainer(SCHEMA, "whole", SCHEMA, parts);
        EReference columns = addContents(TABLE, "columns", COLUMN);
        addContainer(TABLE, "schema", SCHEMA, tables);
        addContainer(COLUMN, "table", TABLE, columns);
        addReference(COLUMN, "type", TABLE);
        PACKAGE.setEFactoryInstance(new Factory());
        EPackage.Registry.INSTANCE.put(PACKAGE.getNsURI(), PACKAGE);
        ((EPackageImpl) PACKAGE).freeze();
    }

    private Lean() {}

    private static EClass addClass(String name, Class<?> instances, EClass superClass) {
        EClass made = EcoreFactory.eINSTANCE.createEClass();
        made.setName(name);
        made.setAbstract(superClass == null);
        made.setInstanceClass(instances);
        if (superClass != null) {
            made.getESuperTypes().add(superClass);
        }
        PACKAGE.getEClassifiers().add(made);
        return made;
    }

    private static EReference addReference(EClass owner, String name, EClass type) {
        EReference made = EcoreFactory.eINSTANCE.createEReference();
        made.setName(name);
        made.setEType(type);
        made.setResolveProxies(false);
        owner.getEStructuralFeatures().add(made);
        return made;
    }

    private static EReference addContents(EClass owner, String name, EClass type) {
        EReference made = addReference(owner, name, type);
        made.setContainment(true);
        made.setUpperBound(ETypedElement.UNBOUNDED_MULTIPLICITY);
        return made;
    }

    private static void addContainer(EClass owner, String name, EClass type, EReference opposite) {
        EReference made = addReference(owner, name, type);
        made.setTransient(true);
        made.setEOpposite(opposite);
        opposite.setEOpposite(made);
    }

    public static final class Factory extends EFactoryImpl {
        @Override public EObject create(EClass type) {
            if (type == COLUMN) {
                return new ColumnImpl();
            }
            if (type == TABLE) {
                return new TableImpl();
            }
            if (type == SCHEMA) {
                return new SchemaImpl();
            }
            throw new IllegalArgumentException(type.getName());
        }
    }

    public interface Named extends EObject {
        String getName();
        void setName(String name);
    }

    public interface Schema extends Named {
        EList<Schema> getParts();
        EList<Table> getTables();
        Schema getWhole();
        void setWhole(Schema whole);
    }

    public interface Table extends Named {
        EList<Column> getColumns();
        Schema getSchema();
        void setSchema(Schema schema);
    }

    public interface Column extends Named {
        Table getTable();
        void setTable(Table table);
        Table getType();
        void setType(Table type);
    }

    public abstract static class NamedImpl extends MinimalEObjectImpl.Container implements Named {
        protected static final String NAME_EDEFAULT = null;
        protected String name = NAME_EDEFAULT;

        @Override public String getName() {
            return name;
        }

        @Override public void setName(String newName) {
            String oldName = name;
            name = newName;
            if (eNotificationRequired()) {
                eNotify(new ENotificationImpl(this, Notification.SET, NAME, oldName, name));
            }
        }

        /** What the generated setters of a container have in common. */
        protected void moveTo(InternalEObject target, int inverse, Class<?> inverseClass, int own) {
            if (target != eInternalContainer() || (eContainerFeatureID() != own && target != null)) {
                if (EcoreUtil.isAncestor(this, target)) {
                    throw new IllegalArgumentException("Recursive containment not allowed for " + this);
                }
                NotificationChain messages = leaveContainer(null);
                if (target != null) {
                    messages = target.eInverseAdd(this, inverse, inverseClass, messages);
                }
                messages = eBasicSetContainer(target, own, messages);
                if (messages != null) {
                    messages.dispatch();
                }
            } else if (eNotificationRequired()) {
                eNotify(new ENotificationImpl(this, Notification.SET, own, target, target));
            }
        }

        protected NotificationChain leaveContainer(NotificationChain messages) {
            return eInternalContainer() == null ? messages : eBasicRemoveFromContainer(messages);
        }

        @Override public Object eGet(int feature, boolean resolve, boolean coreType) {
            return feature == NAME ? getName() : super.eGet(feature, resolve, coreType);
        }

        @Override public void eSet(int feature, Object value) {
            if (feature == NAME) {
                setName((String) value);
            } else {
                super.eSet(feature, value);
            }
        }

        @Override public void eUnset(int feature) {
            if (feature == NAME) {
                setName(NAME_EDEFAULT);
            } else {
                super.eUnset(feature);
            }
        }

        @Override public boolean eIsSet(int feature) {
            return feature == NAME ? name != null : super.eIsSet(feature);
        }
    }

    public static final class SchemaImpl extends NamedImpl implements Schema {
        protected EList<Schema> parts;
        protected EList<Table> tables;

        @Override protected EClass eStaticClass() {
            return SCHEMA;
        }

        @Override public EList<Schema> getParts() {
            if (parts == null) {
                parts = new EObjectContainmentWithInverseEList<>(Schema.class, this, SCHEMA_PARTS, SCHEMA_WHOLE);
            }
            return parts;
        }

        @Override public EList<Table> getTables() {
            if (tables == null) {
                tables = new EObjectContainmentWithInverseEList<>(Table.class, this, SCHEMA_TABLES, TABLE_SCHEMA);
            }
            return tables;
        }

        @Override public Schema getWhole() {
            return eContainerFeatureID() == SCHEMA_WHOLE ? (Schema) eInternalContainer() : null;
        }

        @Override public void setWhole(Schema whole) {
            moveTo((InternalEObject) whole, SCHEMA_PARTS, Schema.class, SCHEMA_WHOLE);
        }

        @SuppressWarnings("unchecked")
        @Override
        public NotificationChain eInverseAdd(InternalEObject end, int feature, NotificationChain messages) {
            switch (feature) {
            case SCHEMA_PARTS:
                return ((InternalEList<InternalEObject>) (InternalEList<?>) getParts()).basicAdd(end, messages);
            case SCHEMA_TABLES:
                return ((InternalEList<InternalEObject>) (InternalEList<?>) getTables()).basicAdd(end, messages);
            case SCHEMA_WHOLE:
                return eBasicSetContainer(end, SCHEMA_WHOLE, leaveContainer(messages));
            default:
                return super.eInverseAdd(end, feature, messages);
            }
        }

        @Override
        public NotificationChain eInverseRemove(InternalEObject end, int feature, NotificationChain messages) {
            switch (feature) {
            case SCHEMA_PARTS:
                return ((InternalEList<?>) getParts()).basicRemove(end, messages);
            case SCHEMA_TABLES:
                return ((InternalEList<?>) getTables()).basicRemove(end, messages);
            case SCHEMA_WHOLE:
                return eBasicSetContainer(null, SCHEMA_WHOLE, messages);
            default:
                return super.eInverseRemove(end, feature, messages);
            }
        }

        @Override public NotificationChain eBasicRemoveFromContainerFeature(NotificationChain messages) {
            return eContainerFeatureID() == SCHEMA_WHOLE
                    ? eInternalContainer().eInverseRemove(this, SCHEMA_PARTS, Schema.class, messages)
                    : super.eBasicRemoveFromContainerFeature(messages);
        }

        @Override public Object eGet(int feature, boolean resolve, boolean coreType) {
            switch (feature) {
            case SCHEMA_PARTS:
                return getParts();
            case SCHEMA_TABLES:
                return getTables();
            case SCHEMA_WHOLE:
                return getWhole();
            default:
                return super.eGet(feature, resolve, coreType);
            }
        }

        @SuppressWarnings("unchecked")
        @Override public void eSet(int feature, Object value) {
            switch (feature) {
            case SCHEMA_PARTS:
                getParts().clear();
                getParts().addAll((Collection<? extends Schema>) value);
                return;
            case SCHEMA_TABLES:
                getTables().clear();
                getTables().addAll((Collection<? extends Table>) value);
                return;
            case SCHEMA_WHOLE:
                setWhole((Schema) value);
                return;
            default:
                super.eSet(feature, value);
            }
        }

        @Override public void eUnset(int feature) {
            switch (feature) {
            case SCHEMA_PARTS:
                getParts().clear();
                return;
            case SCHEMA_TABLES:
                getTables().clear();
                return;
            case SCHEMA_WHOLE:
                setWhole(null);
                return;
            default:
                super.eUnset(feature);
            }
        }

        @Override public boolean eIsSet(int feature) {
            switch (feature) {
            case SCHEMA_PARTS:
                return parts != null && !parts.isEmpty();
            case SCHEMA_TABLES:
                return tables != null && !tables.isEmpty();
            case SCHEMA_WHOLE:
                return getWhole() != null;
            default:
                return super.eIsSet(feature);
            }
        }
    }

    public static final class TableImpl extends NamedImpl implements Table {
        protected EList<Column> columns;

        @Override protected EClass eStaticClass() {
            return TABLE;
        }

        @Override public EList<Column> getColumns() {
            if (columns == null) {
                columns = new EObjectContainmentWithInverseEList<>(Column.class, this, TABLE_COLUMNS, COLUMN_TABLE);
            }
            return columns;
        }

        @Override public Schema getSchema() {
            return eContainerFeatureID() == TABLE_SCHEMA ? (Schema) eInternalContainer() : null;
        }

        @Override public void setSchema(Schema schema) {
            moveTo((InternalEObject) schema, SCHEMA_TABLES, Schema.class, TABLE_SCHEMA);
        }

        @SuppressWarnings("unchecked")
        @Override
        public NotificationChain eInverseAdd(InternalEObject end, int feature, NotificationChain messages) {
            switch (feature) {
            case TABLE_COLUMNS:
                return ((InternalEList<InternalEObject>) (InternalEList<?>) getColumns()).basicAdd(end, messages);
            case TABLE_SCHEMA:
                return eBasicSetContainer(end, TABLE_SCHEMA, leaveContainer(messages));
            default:
                return super.eInverseAdd(end, feature, messages);
            }
        }

        @Override
        public NotificationChain eInverseRemove(InternalEObject end, int feature, NotificationChain messages) {
            switch (feature) {
            case TABLE_COLUMNS:
                return ((InternalEList<?>) getColumns()).basicRemove(end, messages);
            case TABLE_SCHEMA:
                return eBasicSetContainer(null, TABLE_SCHEMA, messages);
            default:
                return super.eInverseRemove(end, feature, messages);
            }
        }

        @Override public NotificationChain eBasicRemoveFromContainerFeature(NotificationChain messages) {
            return eContainerFeatureID() == TABLE_SCHEMA
                    ? eInternalContainer().eInverseRemove(this, SCHEMA_TABLES, Schema.class, messages)
                    : super.eBasicRemoveFromContainerFeature(messages);
        }

        @Override public Object eGet(int feature, boolean resolve, boolean coreType) {
            switch (feature) {
            case TABLE_COLUMNS:
                return getColumns();
            case TABLE_SCHEMA:
                return getSchema();
            default:
                return super.eGet(feature, resolve, coreType);
            }
        }

        @SuppressWarnings("unchecked")
        @Override public void eSet(int feature, Object value) {
            switch (feature) {
            case TABLE_COLUMNS:
                getColumns().clear();
                getColumns().addAll((Collection<? extends Column>) value);
                return;
            case TABLE_SCHEMA:
                setSchema((Schema) value);
                return;
            default:
                super.eSet(feature, value);
            }
        }

        @Override public void eUnset(int feature) {
            switch (feature) {
            case TABLE_COLUMNS:
                getColumns().clear();
                return;
            case TABLE_SCHEMA:
                setSchema(null);
                return;
            default:
                super.eUnset(feature);
            }
        }

        @Override public boolean eIsSet(int feature) {
            switch (feature) {
            case TABLE_COLUMNS:
                return columns != null && !columns.isEmpty();
            case TABLE_SCHEMA:
                return getSchema() != null;
            default:
                return super.eIsSet(feature);
            }
        }
    }

    public static final class ColumnImpl extends NamedImpl implements Column {
        protected Table type;

        @Override protected EClass eStaticClass() {
            return COLUMN;
        }

        @Override public Table getTable() {
            return eContainerFeatureID() == COLUMN_TABLE ? (Table) eInternalContainer() : null;
        }

        @Override public void setTable(Table table) {
            moveTo((InternalEObject) table, TABLE_COLUMNS, Table.class, COLUMN_TABLE);
        }

        @Override public Table getType() {
            return type;
        }

        @Override public void setType(Table newType) {
            Table oldType = type;
            type = newType;
            if (eNotificationRequired()) {
                eNotify(new ENotificationImpl(this, Notification.SET, COLUMN_TYPE, oldType, type));
            }
        }

        @Override
        public NotificationChain eInverseAdd(InternalEObject end, int feature, NotificationChain messages) {
            return feature == COLUMN_TABLE ? eBasicSetContainer(end, COLUMN_TABLE, leaveContainer(messages))
                    : super.eInverseAdd(end, feature, messages);
        }

        @Override
        public NotificationChain eInverseRemove(InternalEObject end, int feature, NotificationChain messages) {
            return feature == COLUMN_TABLE ? eBasicSetContainer(null, COLUMN_TABLE, messages)
                    : super.eInverseRemove(end, feature, messages);
        }

        @Override public NotificationChain eBasicRemoveFromContainerFeature(NotificationChain messages) {
            return eContainerFeatureID() == COLUMN_TABLE
                    ? eInternalContainer().eInverseRemove(this, TABLE_COLUMNS, Table.class, messages)
                    : super.eBasicRemoveFromContainerFeature(messages);
        }

        @Override public Object eGet(int feature, boolean resolve, boolean coreType) {
            switch (feature) {
            case COLUMN_TABLE:
                return getTable();
            case COLUMN_TYPE:
                return getType();
            default:
                return super.eGet(feature, resolve, coreType);
            }
        }

        @Override public void eSet(int feature, Object value) {
            switch (feature) {
            case COLUMN_TABLE:
                setTable((Table) value);
                return;
            case COLUMN_TYPE:
                setType((Table) value);
                return;
            default:
                super.eSet(feature, value);
            }
        }

        @Override public void eUnset(int feature) {
            switch (feature) {
            case COLUMN_TABLE:
                setTable(null);
                return;
            case COLUMN_TYPE:
                setType(null);
                return;
            default:
                super.eUnset(feature);
            }
        }

        @Override public boolean eIsSet(int feature) {
            switch (feature) {
            case COLUMN_TABLE:
                return getTable() != null;
            case COLUMN_TYPE:
                return type != null;
            default:
                return super.eIsSet(feature);
            }
        }
    }
}
