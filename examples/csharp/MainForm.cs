using System;
using System.IO;
using System.Windows.Forms;

namespace MethodEditorHost
{
    /// <summary>A window around the control: it opens a method when it is shown and offers to save it when it is closed.</summary>
    public sealed class MainForm : Form
    {
        private readonly MethodEditorControl methodEditor = new MethodEditorControl();
        private readonly string folder;
        private readonly string methodFile;

        public MainForm(string folder, string methodFile)
        {
            this.folder = folder;
            this.methodFile = methodFile;
            Text = Path.GetFileName(methodFile);
            ClientSize = new System.Drawing.Size(900, 640);
            methodEditor.Dock = DockStyle.Fill;
            methodEditor.BeginInit();
            Controls.Add(methodEditor);
            methodEditor.EndInit();
            methodEditor.MethodEditorError += (sender, e) =>
                System.Diagnostics.Trace.WriteLine(e.Procedure + ": " + e.Description + " (0x" + e.Number.ToString("X8") + ")");
        }

        protected override void OnShown(EventArgs e)
        {
            base.OnShown(e);
            // snippet: load
            methodEditor.Editor.SetXmlDocuments(
                LoadDocument(Path.Combine(folder, "macros.xml")),
                LoadDocument(Path.Combine(folder, "objects.xml")),
                LoadDocument(methodFile),
                LoadDocument(Path.Combine(folder, "config.xml")));
            // end of snippet
        }

        protected override void OnFormClosing(FormClosingEventArgs e)
        {
            base.OnFormClosing(e);
            if (e.Cancel || methodEditor.Editor == null || !methodEditor.Editor.MethodIsChanged)
            {
                return;
            }
            var answer = MessageBox.Show(this, "Save the method?", Text, MessageBoxButtons.YesNoCancel);
            // The control is gone with the window: what is not saved by now is lost.
            e.Cancel = answer == DialogResult.Cancel || (answer == DialogResult.Yes && !Save());
        }

        // snippet: save
        /// <summary>False when the control gives no method: a value is refused, or there is no step.</summary>
        private bool Save()
        {
            dynamic method = methodEditor.Editor.GetMethodXml();
            if (method == null)
            {
                return false;
            }
            method.save(methodFile);
            return true;
        }

        private static object LoadDocument(string path)
        {
            var type = Type.GetTypeFromProgID("Msxml2.DOMDocument.6.0", true);
            dynamic document = Activator.CreateInstance(type);
            document.async = false;
            if (!document.load(path))
            {
                throw new InvalidDataException(path + ": " + document.parseError.reason);
            }
            return document;
        }
        // end of snippet
    }
}
