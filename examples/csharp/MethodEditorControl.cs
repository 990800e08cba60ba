using System;
using System.Runtime.InteropServices;
using System.Windows.Forms;

namespace MethodEditorHost
{
    public sealed class MethodEditorErrorEventArgs : EventArgs
    {
        public int Number { get; set; }
        public string Description { get; set; }
        public string Procedure { get; set; }
    }

    // snippet: control
    /// <summary>The method editor as a control of Windows Forms.</summary>
    public sealed class MethodEditorControl : AxHost
    {
        private ConnectionPointCookie connection;

        public MethodEditorControl()
            : base("4611a8f1-26d4-4c96-a88e-60d9d78cc342")
        {
        }

        /// <summary>Raised while a member of the editor is under way, on the thread of the form.</summary>
        public event EventHandler<MethodEditorErrorEventArgs> MethodEditorError;

        /// <summary>The editor's members; null before the control is created and after it is disposed of.</summary>
        public IVRN_MethodEditor Editor { get; private set; }

        protected override void AttachInterfaces()
        {
            Editor = (IVRN_MethodEditor)GetOcx();
        }

        protected override void CreateSink()
        {
            connection = new ConnectionPointCookie(GetOcx(), new Sink(this), typeof(DVRN_MethodEditorEvents));
        }

        protected override void DetachSink()
        {
            if (connection != null)
            {
                connection.Disconnect();
                connection = null;
            }
        }

        [ComVisible(true), ClassInterface(ClassInterfaceType.None)]
        public sealed class Sink : DVRN_MethodEditorEvents
        {
            private readonly MethodEditorControl owner;

            internal Sink(MethodEditorControl owner)
            {
                this.owner = owner;
            }

            public void MethodEditorError(int lngError, string strError, string strApplication, string strModule,
                string strProcedure, short intLineNumber)
            {
                var handler = owner.MethodEditorError;
                if (handler != null)
                {
                    handler(owner, new MethodEditorErrorEventArgs
                    {
                        Number = lngError,
                        Description = strError,
                        Procedure = strProcedure.TrimEnd()
                    });
                }
            }
        }
    }
    // end of snippet
}
