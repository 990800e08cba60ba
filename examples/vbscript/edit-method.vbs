' Takes a method through the method editor without a window: the control verifies the method, brings its cycles up to the
' catalogue's state and signs it again.
'
'   cscript //nologo edit-method.vbs SET METHOD OUTPUT      SET is a folder with macros.xml, objects.xml and config.xml
'
' Ends with 7 when OUTPUT is written, since some script hosts report 0 for a script that failed halfway; 1: something failed,
' 2: wrong arguments, 3: the control refused the method. The control must be registered in the bitness of the script host.
Option Explicit

Const OutputWritten = 7
Const WrongArguments = 2
Const MethodRefused = 3
Const SomethingFailed = 1

' What the event said last.
Dim refusal
refusal = ""

If WScript.Arguments.Count <> 3 Then
    Finish WrongArguments, "cscript //nologo edit-method.vbs SET METHOD OUTPUT"
End If
EditMethod WScript.Arguments(0), WScript.Arguments(1), WScript.Arguments(2)

Sub EditMethod(folder, methodFile, output)
    ' snippet: load
    Dim editor
    Set editor = CreateEditor()
    editor.SetXmlDocuments Load(folder & "\macros.xml"), Load(folder & "\objects.xml"), _
        Load(methodFile), Load(folder & "\config.xml")
    If refusal <> "" Then
        Finish MethodRefused, refusal
    End If
    ' end of snippet

    ' snippet: take-back
    WScript.Echo "changed: " & editor.MethodIsChanged
    WScript.Echo editor.AuditTrail
    Dim method
    Set method = editor.GetMethodXml
    If method Is Nothing Then
        Finish MethodRefused, "The control gives no method back. " & refusal
    End If
    method.save (output)  ' the text itself, as in Load
    ' end of snippet

    ' What was written loads again and verifies. Read-only this time: nobody is going to edit it.
    editor.SetXmlDocuments Load(folder & "\macros.xml"), Load(folder & "\objects.xml"), _
        Load(output), Load(folder & "\config.xml")
    editor.DisableMethod = True
    If refusal <> "" Or editor.MethodIsChanged Then
        Finish SomethingFailed, output & " is not what the control gave. " & refusal
    End If
    Finish OutputWritten, output & " is written."
End Sub

' snippet: event
' Called while SetXmlDocuments or another member is under way. The member itself returns normally. A method that fails its
' verification is also told to the user, in a message box that waits for an answer.
Sub Editor_MethodEditorError(lngError, strError, strApplication, strModule, strProcedure, intLineNumber)
    refusal = strError & " (0x" & Hex(lngError) & " in " & Trim(strProcedure) & ")"
End Sub

Function CreateEditor()
    Const NoSuchAction = 445
    Dim number, description
    On Error Resume Next
    Set CreateEditor = WScript.CreateObject("vrnMethodEditor.VRN_MethodEditor", "Editor_")
    If Err.Number = NoSuchAction Then
        ' The script host of Wine 8 connects no events; the rest works there without.
        Err.Clear
        Set CreateEditor = WScript.CreateObject("vrnMethodEditor.VRN_MethodEditor")
    End If
    number = Err.Number
    description = Err.Description
    On Error GoTo 0
    If number <> 0 Then
        Finish SomethingFailed, "The method editor cannot be created: " & description
    End If
End Function
' end of snippet

' snippet: documents
Function Load(path)
    Dim document
    Set document = WScript.CreateObject("Msxml2.DOMDocument.6.0")
    document.async = False
    ' The inner parentheses pass the text itself and not a reference to the variable, which Wine 8 does not follow.
    If Not document.load((path)) Then
        Finish SomethingFailed, path & " is not read: " & document.parseError.reason
    End If
    Set Load = document
End Function
' end of snippet

Sub Finish(status, text)
    WScript.Echo text
    WScript.Quit status
End Sub
