# Behind a line's end is its end; characters outside of the basic plane count two; lines end in three ways.
file a.c
    int one;

> begin
> open a.c
> change a.c [{"text": "/* \ud83d\ude00 \u00e9 */ int f(void);\r\nint g(void) { return f(); }\rint h(void) { return f(); }\nint last = 1;\nint more = last"}]
> request textDocument/definition {"textDocument": {"uri": "$uri/a.c"}, "position": {"line": 1, "character": 21}}
< result [{"uri": "$uri/a.c", "range": {"start": {"line": 0, "character": 15}, "end": {"line": 0, "character": 16}}}]
> request textDocument/definition {"textDocument": {"uri": "$uri/a.c"}, "position": {"line": 2, "character": 21}}
< result [{"uri": "$uri/a.c", "range": {"start": {"line": 0, "character": 15}, "end": {"line": 0, "character": 16}}}]
> request textDocument/hover {"textDocument": {"uri": "$uri/a.c"}, "position": {"line": 4, "character": 4000}}
< result {"contents": "...", "range": {"start": {"line": 4, "character": 11}, "end": {"line": 4, "character": 15}}}
> request textDocument/hover {"textDocument": {"uri": "$uri/a.c"}, "position": {"line": 4000, "character": 0}}
< result {"contents": "...", "range": {"start": {"line": 4, "character": 11}, "end": {"line": 4, "character": 15}}}
# Within the pair of the first character.
> change a.c [{"range": {"start": {"line": 0, "character": 4}, "end": {"line": 0, "character": 5}}, "text": "x"}]
> request textDocument/documentSymbol a.c
< result [{"name": "f", "...": "..."}, {"name": "g", "...": "..."}, {"name": "h", "...": "..."}, "..."]
> change a.c [{"text": ""}]
> request textDocument/documentSymbol a.c
< result []
> request textDocument/foldingRange a.c
< result []
> request textDocument/hover {"textDocument": {"uri": "$uri/a.c"}, "position": {"line": 0, "character": 0}}
< result null
