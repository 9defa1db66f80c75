/// @file
/// Nodes as XML text.

#pragma once

#include <cstddef>

#include <platform/xml/detail/DomTree.h>

/// Takes the pieces of a printed text.
class DomSink {
public:
    virtual void Write(const char* data, std::size_t size) = 0;

protected:
    ~DomSink() = default;
};

/// Prints `node` with all that it holds in UTF-8, adding no white space. The document
/// is printed without the nodes that are detached.
void PrintDom(const DomTree& tree, pugi::xml_node node, DomSink& sink);
