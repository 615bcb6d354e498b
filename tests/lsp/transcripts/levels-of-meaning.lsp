# The innermost level that has a hit decides which symbol is meant; then all its definitions are answers, else all its
# declarations. Where no level has one, the answers are those by name, and the hover says so.
file a.cpp
    int ‹g›level‹g2›;
    struct Shape {
        int ‹m›level‹m2›;
        int Get() { return ‹um›level‹um2›; }
        int Of(int ‹p›level‹p2›) { return ‹up›level‹up2›; }
    };
    int Global() { return ‹ug›level‹ug2›; }
    void ‹l1›Late‹l12›();
    void ‹l2›Late‹l22›();
    void Use() { ‹l›Late(); }
file b.cpp
    struct One { void ‹b1›Draw‹b12›() {} };
    struct Two { void ‹b2›Draw‹b22›() {} };
    template<typename T> void All(T t) { t.‹t›Draw‹t2›(); }

> begin {"capabilities": {"textDocument": {"hover": {"contentFormat": ["plaintext"]}}}}
> open a.cpp
> open b.cpp
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request textDocument/definition @um
< result [{"uri": "$uri/a.cpp", "range": "@m..m2"}]
> request textDocument/definition @up
< result [{"uri": "$uri/a.cpp", "range": "@p..p2"}]
> request textDocument/definition @ug
< result [{"uri": "$uri/a.cpp", "range": "@g..g2"}]
> request textDocument/definition @l
< result [{"uri": "$uri/a.cpp", "range": "@l2..l22"}, {"uri": "$uri/a.cpp", "range": "@l1..l12"}]
> request textDocument/definition @t
< result [{"uri": "$uri/b.cpp", "range": "@b1..b12"}, {"uri": "$uri/b.cpp", "range": "@b2..b22"}]
> request textDocument/hover @t
< result {"contents": {"kind": "plaintext", "value": "...void Draw()...and 1 more...found by its name"}, "range": "@t..t2"}
> request textDocument/hover @ug
< result {"contents": {"kind": "plaintext", "value": "int level\n\na.cpp:1"}, "range": "@ug..ug2"}
