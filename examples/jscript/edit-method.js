// Takes a method through the method editor without a window: the control verifies the method, brings its cycles up to the
// catalogue's state and signs it again.
//
//   cscript //nologo edit-method.js SET METHOD OUTPUT      SET is a folder with macros.xml, objects.xml and config.xml
//
// Ends with 7 when OUTPUT is written, since some script hosts report 0 for a script that failed halfway; 1: something failed,
// 2: wrong arguments, 3: the control refused the method. The control must be registered in the bitness of the script host.
var outputWritten = 7, wrongArguments = 2, methodRefused = 3, somethingFailed = 1;

// What the event said last.
var refusal = "";

function finish(status, text) {
    WScript.Echo(text);
    WScript.Quit(status);
}

// snippet: event
// Called while SetXmlDocuments or another member is under way. The member itself returns normally. A method that fails its
// verification is also told to the user, in a message box that waits for an answer.
function Editor_MethodEditorError(lngError, strError, strApplication, strModule, strProcedure, intLineNumber) {
    refusal = strError + " (" + lngError + " in " + strProcedure + ")";
}

function createEditor() {
    var notImplemented = -2147467263;
    try {
        return WScript.CreateObject("vrnMethodEditor.VRN_MethodEditor", "Editor_");
    } catch (error) {
        if (error.number !== notImplemented) {
            finish(somethingFailed, "The method editor cannot be created: " + error.description);
        }
    }
    // The script host of Wine 8 connects no events; the rest works there without.
    return WScript.CreateObject("vrnMethodEditor.VRN_MethodEditor");
}
// end of snippet

function load(path) {
    var document = WScript.CreateObject("Msxml2.DOMDocument.6.0");
    document.async = false;
    if (!document.load(path)) {
        finish(somethingFailed, path + " is not read: " + document.parseError.reason);
    }
    return document;
}

function editMethod(folder, methodFile, output) {
    // snippet: load
    var editor = createEditor();
    var macros = load(folder + "\\macros.xml");
    var objects = load(folder + "\\objects.xml");
    var config = load(folder + "\\config.xml");
    editor.SetXmlDocuments(macros, objects, load(methodFile), config);
    if (refusal !== "") {
        finish(methodRefused, refusal);
    }
    // end of snippet

    // snippet: take-back
    WScript.Echo("changed: " + editor.MethodIsChanged);
    WScript.Echo(editor.AuditTrail);
    var method = editor.GetMethodXml();
    if (method === null) {
        finish(methodRefused, "The control gives no method back. " + refusal);
    }
    method.save(output);
    // end of snippet

    // What was written loads again and verifies. Read-only this time: nobody is going to edit it.
    editor.SetXmlDocuments(macros, objects, load(output), config);
    editor.DisableMethod = true;
    if (refusal !== "" || editor.MethodIsChanged) {
        finish(somethingFailed, output + " is not what the control gave. " + refusal);
    }
    finish(outputWritten, output + " is written.");
}

if (WScript.Arguments.length !== 3) {
    finish(wrongArguments, "cscript //nologo edit-method.js SET METHOD OUTPUT");
}
editMethod(WScript.Arguments(0), WScript.Arguments(1), WScript.Arguments(2));
