# Locals and parameters are renamed; anything else is refused with a sentence.
file a.c
    int f(int ‹p›count‹p2›);
    int f(int ‹q›count‹q2›)
    {
        int other = 1;
        return ‹u›count‹u2› + other;
    }
    int ‹g›shared;

> begin
> open a.c
> request textDocument/prepareRename @u
< result {"range": "@u..u2", "placeholder": "count"}
> request textDocument/rename @u {"newName": "total"}
< result {"changes": {"$uri/a.c": [{"range": "@q..q2", "newText": "total"}, {"range": "@u..u2", "newText": "total"}]}}
> request textDocument/prepareRename @g
< error -32803
> request textDocument/rename @g {"newName": "total"}
< error -32803
> request textDocument/rename @u {"newName": "while"}
< error -32803 "...while..."
> request textDocument/rename @u {"newName": "2nd"}
< error -32803 "...2nd..."
> request textDocument/rename @u {"newName": "other"}
< error -32803 "...other..."
> request textDocument/rename @u {"newName": ""}
< error -32803
> request textDocument/rename @u
< error -32602 "...newName..."
