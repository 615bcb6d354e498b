# What a work tree asks git to run is not run.
file .git/HEAD
    ref: refs/heads/main
file .git/objects/info/packs
file .git/refs/heads/none
file .git/config
    [core]
        repositoryformatversion = 0
        bare = false
        fsmonitor = ./hook
        hooksPath = .
    [filter "evil"]
        clean = ./hook
        smudge = ./hook
        process = ./hook
file .gitattributes
    * filter=evil
file hook
    #!/bin/sh
    echo yes >ran
file ran
    no
file a.c
    int one(void) { return 1; }

> begin
> request workspace/executeCommand {"command": "wren.index"}
< result null
> request workspace/symbol {"query": "one"}
< result [{"name": "one", "...": "..."}]
content ran no...
