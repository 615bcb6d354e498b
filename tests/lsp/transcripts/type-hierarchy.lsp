# Bases and derived classes.
file a.cpp
    struct ‹s›Shape‹s2› { virtual int area(); };
    struct ‹c›Circle‹c2› : ‹b›Shape { int area() override; };
    struct ‹d›Disc‹d2› : Circle {};
    int ‹f›plain();

> begin
> open a.cpp
> request textDocument/prepareTypeHierarchy @b
< result [{"name": "Shape", "kind": 23, "uri": "$uri/a.cpp", "selectionRange": "@s..s2", "...": "..."}]
> request typeHierarchy/supertypes {"item": {"name": "Circle", "kind": 23, "uri": "$uri/a.cpp", "range": "@c..c2", "selectionRange": "@c..c2"}}
< result [{"name": "Shape", "kind": 23, "uri": "$uri/a.cpp", "selectionRange": "@s..s2", "...": "..."}]
> request typeHierarchy/subtypes {"item": {"name": "Shape", "kind": 23, "uri": "$uri/a.cpp", "range": "@s..s2", "selectionRange": "@s..s2"}}
< result [{"name": "Circle", "kind": 23, "uri": "$uri/a.cpp", "selectionRange": "@c..c2", "...": "..."}]
> request typeHierarchy/supertypes {"item": {"name": "Shape", "kind": 23, "uri": "$uri/a.cpp", "range": "@s..s2", "selectionRange": "@s..s2"}}
< result []
> request textDocument/prepareTypeHierarchy @f
< result null
