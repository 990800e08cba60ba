// The control's interfaces as its type library describes them. `aximp vrnMthdA.ocx` writes the same, with a wrapper; what is here
// needs no tool. Identifiers, dispatch ids and the order of the members are frozen.
using System.Runtime.InteropServices;

namespace MethodEditorHost
{
    // snippet: interfaces
    [ComImport, Guid("888FC112-31D3-4894-B2A6-BA106120C91D"), InterfaceType(ComInterfaceType.InterfaceIsDual)]
    public interface IVRN_MethodEditor
    {
        [DispId(1)]
        void refreshControls();

        [DispId(2)]
        void SetXmlDocuments(
            [MarshalAs(UnmanagedType.IDispatch)] object domMacros,
            [MarshalAs(UnmanagedType.IDispatch)] object domlatestKex,
            [MarshalAs(UnmanagedType.IDispatch)] object domMethod,
            [MarshalAs(UnmanagedType.IDispatch)] object domConfig);

        [DispId(3)]
        [return: MarshalAs(UnmanagedType.IDispatch)]
        object GetMethodXml();

        [DispId(4)]
        bool MethodIsChanged
        {
            [return: MarshalAs(UnmanagedType.VariantBool)]
            get;
            [param: MarshalAs(UnmanagedType.VariantBool)]
            set;
        }

        [DispId(5)]
        bool DisableMethod { [param: MarshalAs(UnmanagedType.VariantBool)] set; }

        [DispId(6)]
        bool DisableDescription { [param: MarshalAs(UnmanagedType.VariantBool)] set; }

        [DispId(7)]
        bool DisableSyringe { [param: MarshalAs(UnmanagedType.VariantBool)] set; }

        [DispId(8)]
        string AuditTrail { [return: MarshalAs(UnmanagedType.BStr)] get; }
    }

    [ComVisible(true), Guid("5D9B8F08-B99F-4E30-9AE1-8675F97D2C60"), InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
    public interface DVRN_MethodEditorEvents
    {
        [DispId(1)]
        void MethodEditorError(int lngError, string strError, string strApplication, string strModule, string strProcedure,
            short intLineNumber);
    }
    // end of snippet
}
