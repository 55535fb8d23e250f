import java.awt.event.ActionEvent;
import javax.swing.AbstractAction;
import javax.swing.JFrame;
import javax.swing.JPasswordField;
import javax.swing.JTextArea;
import javax.swing.JTextField;
import javax.swing.KeyStroke;
import javax.swing.SwingUtilities;
import javax.swing.text.JTextComponent;
import javax.swing.undo.UndoManager;

/** A window with one text field of Swing. Usage: SwingField entry|text|password */
public class SwingField {
    public static void main(String[] arguments) {
        SwingUtilities.invokeLater(() -> show(arguments[0]));
    }

    private static void show(String kind) {
        JTextComponent field = switch (kind) {
            case "entry" -> new JTextField(40);
            case "password" -> new JPasswordField(40);
            default -> new JTextArea(12, 60);
        };
        UndoManager history = new UndoManager();
        field.getDocument().addUndoableEditListener(history);
        field.getInputMap().put(KeyStroke.getKeyStroke("control Z"), "undo");
        field.getActionMap().put("undo", new AbstractAction() {
            @Override
            public void actionPerformed(ActionEvent event) {
                if (history.canUndo())
                    history.undo();
            }
        });
        JFrame window = new JFrame("Sample field");
        window.setDefaultCloseOperation(JFrame.EXIT_ON_CLOSE);
        window.add(field);
        window.pack();
        window.setVisible(true);
        field.requestFocusInWindow();
    }
}
