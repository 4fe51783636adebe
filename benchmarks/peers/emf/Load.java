import java.io.File;
import org.eclipse.emf.ecore.EcorePackage;

/** Loads a file and ends: Load built-in|lean FILE. */
public final class Load {
    private Load() {}

    public static void main(String[] arguments) throws Exception {
        // Naming a package registers it.
        if (arguments[0].equals("lean")) {
            Lean.PACKAGE.getName();
        } else {
            EcorePackage.eINSTANCE.getName();
        }
        if (XmiFile.load(new File(arguments[1])).getContents().isEmpty()) {
            System.exit(1);
        }
    }
}
