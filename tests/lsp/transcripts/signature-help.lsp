# The overloads, the one that takes as many arguments, and the argument at the cursor; nested calls by themselves.
file a.cpp
    int sum(int a);
    int sum(int a, int b);
    int print(const char* format, ...);
    int f()
    {
        sum(‹one›1, ‹two›sum(‹inner›2));
        print("%d", 1, ‹v›2);
        return ‹n›0;
    }

> begin {"capabilities": {"textDocument": {"signatureHelp": {"signatureInformation": {"parameterInformation": {"labelOffsetSupport": true}}}}}}
> open a.cpp
> request textDocument/signatureHelp @one
< result {"signatures": [{"label": "int sum(int a, int b)", "parameters": [{"label": ["...", "..."], "...": "..."}, "..."], "...": "..."},
    {"label": "int sum(int a)", "...": "..."}], "activeSignature": 0, "activeParameter": 0}
> request textDocument/signatureHelp @two
< result {"activeSignature": 0, "activeParameter": 1, "...": "..."}
> request textDocument/signatureHelp @inner
< result {"activeSignature": 0, "activeParameter": 0, "...": "..."}
> request textDocument/signatureHelp @v
< result {"activeParameter": 1, "...": "..."}
> request textDocument/signatureHelp @n
< result null
