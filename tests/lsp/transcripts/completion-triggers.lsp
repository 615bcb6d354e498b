# Asked by a character, the answer is empty unless the place is a member's, an include's or a message's.
file dir/near.h
    int near_one;
file a.cpp
    #include "dir/‹i›ne‹i2›"
    struct Shape { static int count; int size; private: int secret; };
    int f(Shape* s)
    {
        int a[3] = {0}; ‹blank›
        a[‹b›0] = 1;
        s->‹m›;
        Shape::‹c›;
        s->‹n›s‹n2›;
    }

> begin {"capabilities": {"textDocument": {"completion": {"completionItem": {"insertReplaceSupport": true}}}}}
> open a.cpp
> request textDocument/completion @m {"context": {"triggerKind": 2, "triggerCharacter": ">"}}
< result {"isIncomplete": false, "items": [{"label": "size", "kind": 5, "...": "..."}, {"label": "count", "kind": 5, "...": "..."}, {"label": "secret", "kind": 5, "...": "..."}]}
> request textDocument/completion @c {"context": {"triggerKind": 2, "triggerCharacter": ":"}}
< result {"isIncomplete": false, "items": [{"label": "size", "...": "..."}, {"label": "count", "...": "..."}, {"label": "secret", "...": "..."}]}
> request textDocument/completion @b {"context": {"triggerKind": 2, "triggerCharacter": "["}}
< result {"isIncomplete": false, "items": []}
> request textDocument/completion @blank {"context": {"triggerKind": 2, "triggerCharacter": " "}}
< result {"isIncomplete": false, "items": []}
# In an include the word begins behind the last "/".
> request textDocument/completion @i2
< result {"isIncomplete": false, "items": [{"label": "near.h", "kind": 17, "textEdit": {"newText": "near.h", "insert": "@i..i2", "replace": "..."}, "...": "..."}]}
> request textDocument/completion @n
< result {"isIncomplete": false, "items": [{"label": "size", "textEdit": {"newText": "size", "insert": "@n..n", "replace": "@n..n2"}, "...": "..."}, "...", "..."]}
