# Each kind of symbol has the kind that editors draw for it; a label is the bare name. Keywords count in the limit.
file a.cpp
    #define zz_constant 1
    #define zz_call(x) x
    namespace zz_space {}
    enum zz_enumeration { zz_enumerator };
    struct zz_struct {};
    class zz_class {};
    typedef int zz_number;
    typedef zz_class zz_alias;
    int zz_variable;
    int zz_function(int a);
    template<typename zz_type> void f()
    {
        zz_‹c›
    }
    void g()
    {
        whil‹k›
    }
    void h(zz_struct s)
    {
        s.wh‹m›
    }

> begin {"initializationOptions": {"systemHeaders": false, "completion": {"snippets": false, "limit": 30}}}
> open a.cpp
> request textDocument/completion @k
< result {"items": [{"label": "while", "kind": 14, "...": "..."}, "..."], "...": "..."}
> request textDocument/completion @m
< result {"isIncomplete": false, "items": []}
> request textDocument/completion @c
< result {"isIncomplete": false, "items": [{"label": "zz_type", "kind": 25, "...": "..."}, {"label": "zz_enumerator", "kind": 20, "...": "..."},
    {"label": "zz_class", "kind": 7, "...": "..."}, {"label": "zz_function", "kind": 3, "...": "..."},
    {"label": "zz_variable", "kind": 6, "...": "..."}, {"label": "zz_alias", "kind": 22, "...": "..."},
    {"label": "zz_number", "kind": 22, "...": "..."}, {"label": "zz_struct", "kind": 22, "...": "..."},
    {"label": "zz_enumeration", "kind": 13, "...": "..."}, {"label": "zz_space", "kind": 9, "...": "..."},
    {"label": "zz_constant", "kind": 21, "...": "..."}, {"label": "zz_call", "kind": 3, "...": "..."}]}
