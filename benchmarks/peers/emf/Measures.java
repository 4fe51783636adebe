import java.io.File;
import java.util.Iterator;
import org.eclipse.emf.common.util.URI;
import org.eclipse.emf.ecore.*;
import org.eclipse.emf.ecore.change.ChangeDescription;
import org.eclipse.emf.ecore.resource.Resource;
import org.eclipse.emf.ecore.resource.impl.ResourceImpl;
import org.eclipse.emf.ecore.util.EcoreUtil;

/**
 * The work of ../Measures.h, done in EMF: Measures built-in|lean all SIZE FOLDER | later SIZE | bytes SIZE.
 * Each measure prints a line with its name and cost: nanoseconds for an object or a transaction, or bytes.
 */
public final class Measures {
    /** Where results go, so that the work that has made them is not left out. */
    private static volatile Object kept;

    private final Metamodel metamodel;
    private final int size;
    private final String[] names;
    private final String[] otherNames;
    private boolean hasOtherNames;

    public static void main(String[] arguments) throws Exception {
        Metamodel metamodel = Metamodel.of(arguments[0]);
        int size = Integer.parseInt(arguments[2]);
        switch (arguments[1]) {
        case "all":
            new Measures(metamodel, size).measureAll(new File(arguments[3]));
            break;
        case "later":
            new Measures(metamodel, size).measureLater();
            break;
        default:
            measureBytes(metamodel, size);
        }
    }

    private Measures(Metamodel metamodel, int size) {
        this.metamodel = metamodel;
        this.size = size;
        names = numberedNames("element_", size);
        otherNames = numberedNames("changed_", size);
    }

    private void measureAll(File folder) throws Exception {
        measureSample();
        Sample plain = Sample.plain(metamodel, metamodel.makeTop(names[0]), names);
        measureFiles(new File(folder, "plain.xmi"), "", plain);
        measureFiles(new File(folder, "linked.xmi"), "_linked", Sample.linked(metamodel, names));
        Stopwatch.measure("create", size, () -> kept = createRecorded());
    }

    private void measureSample() throws Exception {
        Sample sample = Sample.withObjects(metamodel, names);
        measureGet(sample, "");
        measureReflection(sample);
        Stopwatch.measure("walk", size, () -> require(contained(sample.top) == size, "lost objects on the way"));
        measureCopies(sample);
        measureWrites(sample, "", true);
    }

    private void measureLater() throws Exception {
        for (int i = 0; i < 10; i++) {
            kept = createRecorded();
        }
        kept = null;
        Sample sample = Sample.withObjects(metamodel, names);
        measureGet(sample, "_later");
        measureWrites(sample, "_later", false);
    }

    /** Of the live heap; the names belong to the model. */
    private static void measureBytes(Metamodel metamodel, int size) throws Exception {
        kept = metamodel.makeTop("top"); // so that the classes are there
        long before = usedBytes();
        kept = Sample.plain(metamodel, metamodel.makeTop("element_0"), numberedNames("element_", size)).top;
        Stopwatch.report("bytes", (usedBytes() - before) / (double) size);
    }

    private static long usedBytes() throws InterruptedException {
        Runtime runtime = Runtime.getRuntime();
        long least = Long.MAX_VALUE;
        for (int i = 0; i < 4; i++) {
            System.gc();
            Thread.sleep(30);
            least = Math.min(least, runtime.totalMemory() - runtime.freeMemory());
        }
        return least;
    }

    private void measureGet(Sample sample, String suffix) throws Exception {
        Stopwatch.measure("get" + suffix, size,
                () -> require(metamodel.countNamed(sample.objects) == size, "found an object without a name"));
    }

    private void measureReflection(Sample sample) throws Exception {
        EStructuralFeature feature = metamodel.nameFeature();
        Stopwatch.measure("get_by_property", size, () -> {
            int found = 0;
            for (EObject object : sample.objects) {
                if (object.eGet(feature) != null) {
                    found++;
                }
            }
            require(found == size, "found an object without a name");
        });
        Stopwatch.measure("get_by_name", size, () -> {
            int found = 0;
            for (EObject object : sample.objects) {
                if (object.eGet(object.eClass().getEStructuralFeature("name")) != null) {
                    found++;
                }
            }
            require(found == size, "found an object without a name");
        });
    }

    private static int contained(EObject top) {
        int met = 1;
        for (Iterator<EObject> i = top.eAllContents(); i.hasNext(); i.next()) {
            met++;
        }
        return met;
    }

    private void measureCopies(Sample sample) throws Exception {
        Stopwatch.measure("copy", size, () -> kept = EcoreUtil.copy(sample.top));
        EObject copy = EcoreUtil.copy(sample.top);
        kept = null;
        Stopwatch.measure("compare", size,
                () -> require(EcoreUtil.equals(sample.top, copy), "the copy is different"));
    }

    private void setOtherNames(Sample sample) {
        hasOtherNames = !hasOtherNames;
        metamodel.setNames(sample.objects, hasOtherNames ? otherNames : names);
    }

    private void measureWrites(Sample sample, String suffix, boolean withOneSet) throws Exception {
        Recorder recorder = new Recorder(plainResource(sample.top));
        Stopwatch.measure("set" + suffix, size, recorder::beginAgain, () -> setOtherNames(sample));
        recorder.beginAgain();
        setOtherNames(sample);
        ChangeDescription change = recorder.endRecording();
        EObject last = sample.objects[size - 1];
        Object name = last.eGet(metamodel.nameFeature());
        // Each application makes the change its own opposite.
        Stopwatch.Work apply = change::applyAndReverse;
        Stopwatch.measure("undo" + suffix, size, () -> bringTo(last, name, apply), apply);
        bringTo(last, name, apply);
        require(last.eGet(metamodel.nameFeature()).equals(name), "the redo has not brought back what was undone");
        Stopwatch.measure("redo" + suffix, size, () -> bringAway(last, name, apply), apply);
        if (withOneSet) {
            measureOneSet(sample.objects[size / 2], recorder);
        }
    }

    private void bringTo(EObject object, Object name, Stopwatch.Work apply) throws Exception {
        if (!object.eGet(metamodel.nameFeature()).equals(name)) {
            apply.run();
        }
    }

    private void bringAway(EObject object, Object name, Stopwatch.Work apply) throws Exception {
        if (object.eGet(metamodel.nameFeature()).equals(name)) {
            apply.run();
        }
    }

    private void measureOneSet(EObject object, Recorder recorder) throws Exception {
        int times = 5000;
        Stopwatch.measure("one_set", times, () -> {
            for (int i = 0; i < times; i++) {
                recorder.begin();
                metamodel.setName(object, i % 2 == 0 ? "x" : "y");
                ChangeDescription change = recorder.endRecording();
                change.applyAndReverse();
                change.applyAndReverse();
                kept = change;
            }
        });
    }

    private void measureFiles(File file, String suffix, Sample sample) throws Exception {
        Resource resource = XmiFile.resourceOf(sample.top);
        Stopwatch.measure("save" + suffix, size, () -> XmiFile.save(resource, file));
        Stopwatch.measure("load" + suffix, size, () -> kept = XmiFile.load(file));
        EObject read = ((Resource) kept).getContents().get(0);
        require(contained(read) == contained(sample.top), "lost objects in the file");
        kept = null;
    }

    private Object createRecorded() {
        EObject top = metamodel.makeTop(names[0]);
        Recorder recorder = new Recorder(plainResource(top));
        recorder.begin();
        Sample.plain(metamodel, top, names);
        return recorder.endRecording();
    }

    private static Resource plainResource(EObject top) {
        Resource resource = new ResourceImpl(URI.createURI("peers:sample"));
        resource.getContents().add(top);
        return resource;
    }

    private static String[] numberedNames(String text, int count) {
        String[] made = new String[count];
        for (int i = 0; i < count; i++) {
            made[i] = text + i;
        }
        return made;
    }

    private static void require(boolean isTrue, String failure) {
        if (!isTrue) {
            throw new IllegalStateException(failure);
        }
    }
}
