# The tree of symbols follows the text as it is, saved or not.
file a.cpp
    struct ‹s›Shape‹s2› {
        int ‹a›Area‹a2›();
    };
file notes.txt
    int no_source;

> begin {"capabilities": {"textDocument": {"documentSymbol": {"hierarchicalDocumentSymbolSupport": true}}}}
> open a.cpp
> request textDocument/documentSymbol {"textDocument": {"uri": "$uri/a.cpp"}}
< result [{"name": "Shape", "kind": 23, "selectionRange": "@s..s2", "...": "...", "children": [
    {"name": "Area", "kind": 6, "selectionRange": "@a..a2", "...": "..."}]}]
> change a.cpp [{"text": "int Shape::Area() { return 1; }\n"}]
> request textDocument/documentSymbol {"textDocument": {"uri": "$uri/a.cpp"}}
< result [{"name": "Shape::Area", "kind": 6, "...": "..."}]
> open notes.txt plaintext
> request textDocument/documentSymbol {"textDocument": {"uri": "$uri/notes.txt"}}
< result []
