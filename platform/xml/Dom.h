/// @file
/// The XML document object model: documents, their nodes and elements, lists of nodes,
/// and the smart pointers on them.
///
/// A document in a few lines:
/// @code
///     IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
///     IXMLDOMElementPtr model = document->appendElement("Model");
///     model->appendElement("Name")->put_text("Bracket");
///     document->save("model.xml");
///
///     if (!document->load("model.xml")) Report(document->parseError().reason());
///     CString name = document->documentElement()->selectSingleNode("Name")->text();
/// @endcode
///
/// All text is UTF-8. Failures raise `_com_error`; a bad text makes a load answer
/// false.
///
/// **Threads.** Neither handles nor documents take locks, and reading changes counts
/// and look-up tables, too: all handles of one document belong to one thread at a time.
/// Different documents are independent.
///
/// **Security.** A document may come from anywhere. Loading one opens that file and
/// nothing else: no document type definition, entity, schema, style sheet, inclusion or
/// address in it is ever followed, and a document type definition makes the load fail,
/// so that entities cannot multiply. What is not well-formed is refused, never guessed
/// at. Nothing recurses on the depth of a document. There is no limit on size, depth,
/// number of attributes or length of a text other than memory; a load takes memory in
/// proportion to the size of the text (up to about thirty times, for a text of the
/// smallest elements), so whoever reads from strangers limits the size of what is
/// read. Saving never leaves half a file behind. Time grows in proportion to the
/// size of the text, and for a tag with very many attributes a little faster.

#pragma once

#include <platform/com/COleVariant.h>
#include <platform/com/ComError.h>
#include <platform/xml/DomAttributes.h>
#include <platform/xml/DomText.h>
#include <platform/xml/IXMLDOMDocument.h>
#include <platform/xml/IXMLDOMDocumentPtr.h>
#include <platform/xml/IXMLDOMElement.h>
#include <platform/xml/IXMLDOMElementPtr.h>
#include <platform/xml/IXMLDOMNode.h>
#include <platform/xml/IXMLDOMNodeList.h>
#include <platform/xml/IXMLDOMNodeListPtr.h>
#include <platform/xml/IXMLDOMNodePtr.h>
#include <platform/xml/IXMLDOMParseError.h>
