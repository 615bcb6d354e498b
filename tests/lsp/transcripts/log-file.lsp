# What is for people goes to the file that the command line names.
run --log $root/log
> begin
> change a.c [{"text": "x"}]
< notify window/logMessage {"type": 2, "message": "...not open..."}
content log wren lsp: ...a.c is not open...
    
