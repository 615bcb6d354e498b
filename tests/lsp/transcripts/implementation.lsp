# Derived classes, nearest first; methods that override; of a prototype, its definition.
file a.cpp
    struct ‹s›Shape { virtual int ‹v›area(); };
    struct ‹c›Circle‹c2› : Shape { int ‹ca›area‹ca2›() override { return 1; } };
    struct ‹d›Disc‹d2› : Circle { int ‹da›area‹da2›() override { return 2; } };
    int ‹p›plain();
    int ‹q›plain‹q2›() { return 1; }
    int ‹n›lonely;

> begin
> open a.cpp
> request textDocument/implementation @s
< result [{"uri": "$uri/a.cpp", "range": "@c..c2"}, {"uri": "$uri/a.cpp", "range": "@d..d2"}]
> request textDocument/implementation @v
< result [{"uri": "$uri/a.cpp", "range": "@ca..ca2"}, {"uri": "$uri/a.cpp", "range": "@da..da2"}]
> request textDocument/implementation @p
< result [{"uri": "$uri/a.cpp", "range": "@q..q2"}]
> request textDocument/implementation {"textDocument": {"uri": "$uri/a.cpp"}, "position": {"line": 900, "character": 9}}
< result []
