// The type library says today what it said when programs were compiled against it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

#include "activex/support/ControlFile.h"
#include "com/Com.h"

namespace vrn::test {
namespace {

using com::Bstr;
using com::ComPtr;

std::string textOf(const GUID& id) {
    wchar_t text[40] = {};
    StringFromGUID2(id, text, 40);
    return Bstr(std::wstring_view(text)).utf8();
}

std::string typeName(const ComPtr<ITypeInfo>& info, const TYPEDESC& type) {
    switch (type.vt) {
        case VT_PTR:
            return typeName(info, *type.lptdesc) + "*";
        case VT_USERDEFINED: {
            ComPtr<ITypeInfo> named;
            Bstr name;
            if (FAILED(info->GetRefTypeInfo(type.hreftype, &named)) ||
                FAILED(named->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr))) {
                return "?";
            }
            return name.utf8();
        }
        case VT_I2:
            return "short";
        case VT_I4:
            return "long";
        case VT_BSTR:
            return "BSTR";
        case VT_BOOL:
            return "VARIANT_BOOL";
        case VT_DISPATCH:
            return "IDispatch*";
        case VT_UNKNOWN:
            return "IUnknown*";
        case VT_VARIANT:
            return "VARIANT";
        case VT_HRESULT:
            return "HRESULT";
        case VT_VOID:
            return "void";
        default:
            return "vt" + std::to_string(type.vt);
    }
}

std::string heading(const ComPtr<ITypeInfo>& info, MEMBERID member) {
    Bstr name;
    Bstr help;
    info->GetDocumentation(member, name.put(), help.put(), nullptr, nullptr);
    return name.utf8() + " \"" + help.utf8() + "\"";
}

void dumpFunction(std::ostream& out, const ComPtr<ITypeInfo>& info, UINT index) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(info->GetFuncDesc(index, &function), S_OK);
    if ((function->wFuncFlags & FUNCFLAG_FRESTRICTED) != 0) {
        // The members of IUnknown and IDispatch, which every dual interface has.
        info->ReleaseFuncDesc(function);
        return;
    }
    std::vector<BSTR> names(static_cast<std::size_t>(function->cParams) + 1);
    UINT count = 0;
    info->GetNames(function->memid, names.data(), static_cast<UINT>(names.size()), &count);
    out << "  id " << function->memid << " invoke " << function->invkind << " slot "
        << function->oVft / static_cast<int>(sizeof(void*)) << " flags " << function->wFuncFlags << ' '
        << heading(info, function->memid) << '\n';
    out << "    " << typeName(info, function->elemdescFunc.tdesc);
    for (SHORT i = 0; i < function->cParams; ++i) {
        const auto& parameter = function->lprgelemdescParam[i];
        const BSTR name = names[static_cast<std::size_t>(i) + 1];
        out << (i == 0 ? "(" : ", ") << parameter.paramdesc.wParamFlags << ' ' << typeName(info, parameter.tdesc) << ' '
            << com::utf8Of(name);
    }
    out << (function->cParams == 0 ? "()" : ")") << '\n';
    for (BSTR name : names) {
        SysFreeString(name);
    }
    info->ReleaseFuncDesc(function);
}

void dumpMembers(std::ostream& out, const ComPtr<ITypeInfo>& info, const TYPEATTR& attributes) {
    for (UINT i = 0; i < attributes.cFuncs; ++i) {
        dumpFunction(out, info, i);
    }
    for (UINT i = 0; i < attributes.cVars; ++i) {
        VARDESC* variable = nullptr;
        ASSERT_EQ(info->GetVarDesc(i, &variable), S_OK);
        out << "  " << heading(info, variable->memid) << " = " << variable->lpvarValue->lVal << '\n';
        info->ReleaseVarDesc(variable);
    }
    for (UINT i = 0; attributes.typekind == TKIND_COCLASS && i < attributes.cImplTypes; ++i) {
        HREFTYPE reference = 0;
        INT flags = 0;
        ComPtr<ITypeInfo> implemented;
        ASSERT_EQ(info->GetRefTypeOfImplType(i, &reference), S_OK);
        ASSERT_EQ(info->GetRefTypeInfo(reference, &implemented), S_OK);
        info->GetImplTypeFlags(i, &flags);
        out << "  flags " << flags << ' ' << heading(implemented, MEMBERID_NIL) << '\n';
    }
}

// Everything that a program compiled against the library relies on.
std::string dump(const ComPtr<ITypeLib>& library) {
    std::ostringstream out;
    TLIBATTR* attributes = nullptr;
    library->GetLibAttr(&attributes);
    Bstr name;
    Bstr help;
    Bstr helpFile;
    library->GetDocumentation(-1, name.put(), help.put(), nullptr, helpFile.put());
    const auto helpPath = helpFile.utf8();
    out << "library " << name.utf8() << ' ' << textOf(attributes->guid) << ' ' << attributes->wMajorVerNum << '.'
        << attributes->wMinorVerNum << " \"" << help.utf8() << "\" help file "
        << helpPath.substr(helpPath.find_last_of('\\') + 1) << '\n';
    library->ReleaseTLibAttr(attributes);
    for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
        ComPtr<ITypeInfo> info;
        TYPEATTR* type = nullptr;
        library->GetTypeInfo(i, &info);
        info->GetTypeAttr(&type);
        out << "\nkind " << type->typekind << ' ' << textOf(type->guid) << " flags " << type->wTypeFlags << ' '
            << heading(info, MEMBERID_NIL) << '\n';
        dumpMembers(out, info, *type);
        info->ReleaseTypeAttr(type);
    }
    return out.str();
}

TEST(TypeLibrary, IsTheOneThatHostsWereCompiledAgainst) {
    const Apartment apartment;
    ComPtr<ITypeLib> library;
    ASSERT_EQ(LoadTypeLibEx(controlFile().c_str(), REGKIND_NONE, &library), S_OK);
    const auto* const path = VRN_SOURCE_DIR "/tests/activex/server/vrnMethodEditor.typelib.txt";
    if (std::getenv("VRN_UPDATE_TYPELIB") != nullptr) {
        // For members that are new. One that is there already must not change any more.
        std::ofstream(path, std::ios::binary) << dump(library);
    }
    std::ifstream file(path, std::ios::binary);
    const std::string frozen((std::istreambuf_iterator<char>(file)), {});
    EXPECT_EQ(dump(library), frozen);
}

}  // namespace
}  // namespace vrn::test
