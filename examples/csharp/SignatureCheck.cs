using System.Security.Cryptography;
using System.Security.Cryptography.Xml;
using System.Xml;

namespace MethodEditorHost
{
    internal static class SignatureCheck
    {
        // snippet: verify
        /// <summary>Whether a method of version 4 is as the editor signed it. The key is what `vrnmethod key` prints.</summary>
        internal static bool IsIntact(string path, byte[] key)
        {
            var document = new XmlDocument { PreserveWhitespace = true, XmlResolver = null };
            document.Load(path);
            var signatures = document.DocumentElement.GetElementsByTagName("Signature", SignedXml.XmlDsigNamespaceUrl);
            if (signatures.Count != 1 || signatures[0].ParentNode != document.DocumentElement)
            {
                return false;
            }
            var signed = new SignedXml(document);
            signed.LoadXml((XmlElement)signatures[0]);
            // A signature that is right may still cover the wrong thing: what counts is one that covers the whole document.
            var info = signed.SignedInfo;
            var coversAll = info.References.Count == 1 && ((Reference)info.References[0]).Uri == "" &&
                ((Reference)info.References[0]).TransformChain.Count == 2 &&
                ((Reference)info.References[0]).TransformChain[0] is XmlDsigEnvelopedSignatureTransform &&
                ((Reference)info.References[0]).TransformChain[1] is XmlDsigExcC14NTransform;
            return coversAll && info.SignatureMethod == "http://www.w3.org/2001/04/xmldsig-more#hmac-sha256" &&
                signed.CheckSignature(new HMACSHA256(key));
        }
        // end of snippet
    }
}
