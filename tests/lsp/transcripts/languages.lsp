# The client's language counts; a header's is in its text; others have no answers.
file a.txt
    class Shape { int size; };
file b.py
    int one(void);
file c.h
    @interface Thing
    - (void)run;
    @end

> begin {"capabilities": {"textDocument": {"documentSymbol": {"hierarchicalDocumentSymbolSupport": true}}}}
> open a.txt cpp
> request textDocument/documentSymbol a.txt
< result [{"name": "Shape", "...": "..."}]
> open b.py python
> request textDocument/documentSymbol b.py
< result []
> open c.h c
> request textDocument/documentSymbol c.h
< result [{"name": "Thing", "...": "..."}]
> notify textDocument/didOpen {"textDocument": {"uri": "untitled:Untitled-1", "languageId": "c", "version": 1, "text": "int lonely;"}}
> request textDocument/documentSymbol {"textDocument": {"uri": "untitled:Untitled-1"}}
< result [{"name": "lonely", "...": "..."}]
