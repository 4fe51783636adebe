import java.io.*;
import java.util.*;
import org.eclipse.emf.common.util.URI;
import org.eclipse.emf.ecore.EObject;
import org.eclipse.emf.ecore.resource.Resource;
import org.eclipse.emf.ecore.util.EcoreUtil;
import org.eclipse.emf.ecore.xmi.XMLResource;
import org.eclipse.emf.ecore.xmi.impl.XMIResourceImpl;

/** Saves and loads XMI in the encoding of zel's files, with an id for each object as they have. */
final class XmiFile {
    private static final int BUFFER = 1 << 16;

    private XmiFile() {}

    /** With all ids given, so that saving does not have to. */
    static Resource resourceOf(EObject top) {
        XMIResourceImpl resource = makeResource();
        resource.getContents().add(top);
        for (Iterator<EObject> i = resource.getAllContents(); i.hasNext();) {
            resource.setID(i.next(), EcoreUtil.generateUUID());
        }
        return resource;
    }

    static void save(Resource resource, File file) throws IOException {
        try (OutputStream out = new BufferedOutputStream(new FileOutputStream(file), BUFFER)) {
            resource.save(out, Map.of(XMLResource.OPTION_ENCODING, "ISO-8859-1"));
        }
    }

    /** References are resolved at the end: a file with forward references would take time by the square of its size. */
    static Resource load(File file) throws IOException {
        Resource resource = makeResource();
        try (InputStream in = new BufferedInputStream(new FileInputStream(file), BUFFER)) {
            resource.load(in, Map.of(XMLResource.OPTION_DEFER_IDREF_RESOLUTION, Boolean.TRUE));
        }
        return resource;
    }

    private static XMIResourceImpl makeResource() {
        return new XMIResourceImpl(URI.createURI("peers:sample.xmi"));
    }
}
