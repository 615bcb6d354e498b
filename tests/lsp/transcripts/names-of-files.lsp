# Names with blanks, signs and letters of any language; the URI of an open text is given back as the client wrote it.
file x/unused.c
    int unused(void) { return 1; }

> begin
> notify textDocument/didOpen {"textDocument": {"uri": "$uri/strange%20%231%20%25%c3%A9.c", "languageId": "c", "version": 1, "text": "int one(void) { return 1; }\nint two(void) { return one(); }\n"}}
> request textDocument/definition {"textDocument": {"uri": "$uri/%73trange%20%231%20%25%C3%A9.c"}, "position": {"line": 1, "character": 24}}
< result [{"uri": "$uri/strange%20%231%20%25%c3%A9.c", "range": {"start": {"line": 0, "character": 4}, "end": {"line": 0, "character": 7}}}]
