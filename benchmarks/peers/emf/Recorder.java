import java.util.Collections;
import java.util.Iterator;
import org.eclipse.emf.common.notify.Notifier;
import org.eclipse.emf.ecore.EObject;
import org.eclipse.emf.ecore.change.util.ChangeRecorder;
import org.eclipse.emf.ecore.resource.Resource;
import org.eclipse.emf.ecore.util.InternalEList;

/**
 * Records changes of a resource, attached to it for good. It keeps no list of its objects, so that the end of a
 * recording costs by the size of the change and not of the model: the way of the recorder of EMF Transaction, without
 * its locks, validation and listeners.
 */
final class Recorder extends ChangeRecorder {
    Recorder(Resource resource) {
        super(resource);
        endRecording();
    }

    void begin() {
        beginRecording(Collections.emptyList());
    }

    void beginAgain() {
        if (isRecording()) {
            endRecording();
        }
        begin();
    }

    @Override public void setTarget(Notifier target) {
        Iterator<? extends Notifier> parts = partsOf(target);
        while (parts.hasNext()) {
            addAdapter(parts.next());
        }
    }

    @Override public void unsetTarget(Notifier target) {}

    private static Iterator<? extends Notifier> partsOf(Notifier target) {
        if (target instanceof EObject) {
            return ((InternalEList<EObject>) ((EObject) target).eContents()).basicIterator();
        }
        return target instanceof Resource ? ((Resource) target).getContents().iterator() : Collections.emptyIterator();
    }
}
