import java.util.*;
import org.eclipse.emf.ecore.EObject;

/** A tree of objects that all have names: schemas with a type and 100 tables of five columns each. */
final class Sample {
    private static final int TABLES = 100;
    private static final int COLUMNS = 5;

    final EObject top;
    final EObject[] objects; // in the order of their making, if they are kept
    private final Metamodel metamodel;
    private final String[] names;
    private final List<EObject> types = new ArrayList<>();
    private final List<EObject> columns = new ArrayList<>();
    private final boolean isLinked;
    private int made = 1;

    /** Only the tree is kept: no handles, no links. */
    static Sample plain(Metamodel metamodel, EObject top, String[] names) {
        return new Sample(metamodel, top, names, false, false);
    }

    static Sample withObjects(Metamodel metamodel, String[] names) {
        return new Sample(metamodel, metamodel.makeTop(names[0]), names, true, false);
    }

    /** With a type for each column. */
    static Sample linked(Metamodel metamodel, String[] names) {
        return new Sample(metamodel, metamodel.makeTop(names[0]), names, false, true);
    }

    private Sample(Metamodel metamodel, EObject top, String[] names, boolean keepsObjects, boolean isLinked) {
        this.metamodel = metamodel;
        this.top = top;
        this.names = names;
        this.isLinked = isLinked;
        objects = keepsObjects ? metamodel.makeArray(names.length) : null;
        if (keepsObjects) {
            objects[0] = top;
        }
        while (!isComplete()) {
            addSchema();
        }
        if (isLinked) {
            link();
        }
    }

    private boolean isComplete() {
        return made == names.length;
    }

    private EObject kept(EObject object) {
        if (objects != null) {
            objects[made] = object;
        }
        made++;
        return object;
    }

    private void addSchema() {
        EObject schema = kept(metamodel.addSchema(top, names[made]));
        if (!isComplete()) {
            EObject type = kept(metamodel.addType(schema, names[made]));
            if (isLinked) {
                types.add(type);
            }
        }
        for (int i = 0; i < TABLES && !isComplete(); i++) {
            EObject table = kept(metamodel.addTable(schema, names[made]));
            for (int j = 0; j < COLUMNS && !isComplete(); j++) {
                EObject column = kept(metamodel.addColumn(table, names[made]));
                if (isLinked) {
                    columns.add(column);
                }
            }
        }
    }

    /** Of the five columns of a table three have their type in the table's schema and two in the next one. */
    private void link() {
        for (int i = 0; i < columns.size(); i++) {
            int schema = i / (TABLES * COLUMNS);
            boolean isOwn = i % COLUMNS % 2 == 0;
            metamodel.setType(columns.get(i), types.get(isOwn ? schema : (schema + 1) % types.size()));
        }
    }
}
