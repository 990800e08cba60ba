' Takes a method through the method editor without a window: the control verifies the method, brings its cycles up to the
' catalogue's state and signs it again. Late-bound: neither a reference nor an interop assembly is needed.
'
'   EditMethod SET METHOD OUTPUT      SET is a folder with macros.xml, objects.xml and config.xml
'
' Ends with 0 when OUTPUT is written, with 2 for wrong arguments, with 3 when the control refuses the method.
Imports System
Imports System.IO
Imports System.Runtime.InteropServices

Public Module Program
    ' snippet: event
    Private Delegate Sub ErrorHandler(lngError As Integer, strError As String, strApplication As String, strModule As String,
                                      strProcedure As String, intLineNumber As Short)

    Private ReadOnly EventInterface As New Guid("5D9B8F08-B99F-4E30-9AE1-8675F97D2C60")
    Private Const MethodEditorErrorId As Integer = 1

    Private refused As Boolean

    ' Called while SetXmlDocuments or another member is under way.
    Private Sub OnMethodEditorError(lngError As Integer, strError As String, strApplication As String, strModule As String,
                                    strProcedure As String, intLineNumber As Short)
        Console.Error.WriteLine("{0}: {1} (0x{2:X8})", strProcedure.TrimEnd(), strError, lngError)
        refused = True
    End Sub
    ' end of snippet

    <STAThread>
    Public Function Main(arguments As String()) As Integer
        If arguments.Length <> 3 Then
            Console.Error.WriteLine("EditMethod SET METHOD OUTPUT")
            Return 2
        End If
        Return TakeThrough(Path.GetFullPath(arguments(0)), Path.GetFullPath(arguments(1)), Path.GetFullPath(arguments(2)))
    End Function

    Private Function TakeThrough(folder As String, methodFile As String, output As String) As Integer
        ' snippet: load
        Dim editor As Object = CreateObject("vrnMethodEditor.VRN_MethodEditor")
        Dim handler As New ErrorHandler(AddressOf OnMethodEditorError)
        ComEventsHelper.Combine(editor, EventInterface, MethodEditorErrorId, handler)
        editor.SetXmlDocuments(LoadDocument(Path.Combine(folder, "macros.xml")),
                               LoadDocument(Path.Combine(folder, "objects.xml")),
                               LoadDocument(methodFile),
                               LoadDocument(Path.Combine(folder, "config.xml")))
        ' end of snippet
        Dim method As Object = Nothing
        If Not refused Then
            Console.WriteLine("changed: {0}", editor.MethodIsChanged)
            Console.WriteLine(editor.AuditTrail)
            method = editor.GetMethodXml()
        End If
        If method IsNot Nothing Then
            method.save(output)
        End If
        ComEventsHelper.Remove(editor, EventInterface, MethodEditorErrorId, handler)
        Marshal.FinalReleaseComObject(editor)
        Return If(method IsNot Nothing, 0, 3)
    End Function

    Private Function LoadDocument(name As String) As Object
        Dim document As Object = CreateObject("Msxml2.DOMDocument.6.0")
        document.async = False
        If Not document.load(name) Then
            Throw New InvalidDataException(name & ": " & document.parseError.reason)
        End If
        Return document
    End Function
End Module
