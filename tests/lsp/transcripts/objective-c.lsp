# Names of methods are without "-" and "+", and both methods of one name are listed. A selector of several parts is
# marked at its first part. A category is named behind its class.
file a.m
    @interface Board : NSObject
    + (void)clear;
    - (void)clear;
    - (void)‹d›moveTo‹d2›:(int)x y:(int)y;
    @end
    @interface Board (Drawing)
    - (void)draw;
    @end
    void use(Board *board)
    {
        [board ‹u›moveTo‹u2›:1 y:2];
    }

> begin {"capabilities": {"textDocument": {"documentSymbol": {"hierarchicalDocumentSymbolSupport": true}}}}
> open a.m objective-c
> request textDocument/documentSymbol a.m
< result [{"name": "Board", "children": [{"name": "clear", "...": "..."}, {"name": "clear", "...": "..."}, {"name": "moveTo:y:", "...": "..."}], "...": "..."},
    {"name": "Board (Drawing)", "children": [{"name": "draw", "...": "..."}], "...": "..."}, {"name": "use", "...": "..."}]
> request textDocument/definition @u
< result [{"uri": "$uri/a.m", "range": "@d..d2"}]
> request textDocument/references @u {"context": {"includeDeclaration": false}}
< result [{"uri": "$uri/a.m", "range": "@u..u2"}]
