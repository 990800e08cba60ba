// A host of the method editor in Windows Forms.
//
//   MethodEditorHost.exe SET METHOD                 opens a window; SET is a folder with macros.xml, objects.xml and config.xml
//   MethodEditorHost.exe --verify KEY METHOD        checks a method's signature with .NET alone; KEY is what `vrnmethod key` prints
using System;
using System.IO;
using System.Windows.Forms;

namespace MethodEditorHost
{
    internal static class Program
    {
        // ActiveX controls need a single-threaded apartment.
        [STAThread]
        private static int Main(string[] arguments)
        {
            if (arguments.Length == 3 && arguments[0] == "--verify")
            {
                return SignatureCheck.IsIntact(arguments[2], File.ReadAllBytes(arguments[1])) ? 0 : 1;
            }
            if (arguments.Length != 2)
            {
                MessageBox.Show("MethodEditorHost SET METHOD");
                return 2;
            }
            Application.EnableVisualStyles();
            Application.SetCompatibleTextRenderingDefault(false);
            Application.Run(new MainForm(Path.GetFullPath(arguments[0]), Path.GetFullPath(arguments[1])));
            return 0;
        }
    }
}
