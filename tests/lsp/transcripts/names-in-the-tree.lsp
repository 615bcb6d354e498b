# What has no name is named by what it is. Prototypes and macros are in the tree, locals are not.
file a.c
    #define LIMIT 3
    int sum(int a, int b);
    struct {
        int one;
    } both;
    enum { RED };
    int sum(int a, int b) { int local = a; return local + b; }

> begin {"capabilities": {"textDocument": {"documentSymbol": {"hierarchicalDocumentSymbolSupport": true}}}}
> open a.c
> request textDocument/documentSymbol a.c
< result [{"name": "LIMIT", "...": "..."}, {"name": "sum", "...": "..."},
    {"name": "(anonymous struct)", "children": [{"name": "one", "...": "..."}], "...": "..."}, {"name": "both", "...": "..."},
    {"name": "(anonymous enum)", "children": [{"name": "RED", "...": "..."}], "...": "..."}, {"name": "sum", "...": "..."}]
