#include <zt/zt.h>

#include <cstdio>

// Touches every library and every layer that an installed copy has: an inline
// test, an exported operation, a string, a document, and a resource of its own.
int main() {
    ZT::InitBedrockDll();

    ZT::RangeR1 stock(0.0, 120.0);
    ZT::RangeR1 cut(30.0, 45.0);
    if (stock.Subtract(cut) != 2) return 1;

    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    IXMLDOMElementPtr root = document->appendElement("Stock");

    ZT::PC context;
    context.m_mode = 1;
    ZT::PCExBase cursor(&context, document);
    cursor.Push(root);
    stock.PersistXML(cursor);
    cut.PersistXML(cursor);
    cursor.PopElement(false);

    unsigned int size = 0;
    const unsigned char* const title = ZT::ResourceManager::LoadResource("Title", "TEXT", size);
    if (!title) return 1;

    const CString text = document->xml();
    std::printf("%.*s: %s\n", static_cast<int>(size), reinterpret_cast<const char*>(title),
                text.GetString());
    return text == "<Stock><Rg>0 30</Rg><Rg>45 120</Rg></Stock>" ? 0 : 1;
}
