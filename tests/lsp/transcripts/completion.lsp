# The names behind an operator; documentation and detail come later. A character that means nothing gets no answers.
file a.cpp
    struct Shape { int size; int area(int a); };
    int f(Shape* s)
    {
        return s->‹m›ar‹m2›;
    }
    int g(int a) { return a >‹gt› 1; }

> begin
> open a.cpp
> request textDocument/completion @m2
< result {"isIncomplete": false, "items": [{"label": "area", "kind": 2, "sortText": "00000",
    "textEdit": {"range": "@m..m2", "newText": "area"}, "...": "..."}]}
> request textDocument/completion @gt {"context": {"triggerKind": 2, "triggerCharacter": ">"}}
< result {"isIncomplete": false, "items": []}
> request completionItem/resolve {"label": "x", "data": {"name": "area", "scope": "Shape", "type": "int", "signature": "(int a)"}}
< result {"label": "x", "detail": "int Shape::area(int a)", "...": "..."}
