# Where there is nothing, lists are empty and single answers are null; it is never an error.
file a.c
    int one;
    ‹n›

> begin
> open a.c
> request textDocument/definition @n
< result []
> request textDocument/declaration @n
< result []
> request textDocument/typeDefinition @n
< result []
> request textDocument/implementation @n
< result []
> request textDocument/references @n {"context": {"includeDeclaration": true}}
< result []
> request textDocument/documentHighlight @n
< result []
> request textDocument/hover @n
< result null
> request textDocument/signatureHelp @n
< result null
> request textDocument/prepareCallHierarchy @n
< result null
> request textDocument/prepareTypeHierarchy @n
< result null
> request textDocument/switchSourceHeader {"uri": "$uri/a.c"}
< result null
> request workspace/symbol {"query": "no_such_name"}
< result []
