#include <cstdio>

#include <platform/xml/Dom.h>
#include <zt/persist/PCExBase.h>
#include <zt/ranges/RangeR1.h>

int main() {
    ZT::RangeR1 stored(0.25, 1.5), loaded;
    const IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    const IXMLDOMElementPtr root = document->appendChild(document->createElement("First"));

    for (const int mode : {1, 0}) {  // 1 stores, 0 loads
        ZT::PC context;
        context.m_mode = mode;
        ZT::PCExBase cursor(&context, document);
        cursor.Push(root);
        (mode == 1 ? stored : loaded).PersistXML(cursor);
        cursor.PopElement(false);
    }

    std::puts(document->xml());  // <First><Rg>0.25 1.5</Rg></First>
    std::puts(loaded == stored ? "loaded as it was stored" : "something got lost");
    return loaded == stored ? 0 : 1;
}
