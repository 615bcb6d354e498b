;;; Emacs with lsp-mode: put these lines into ~/.emacs.d/init.el.
(require 'lsp-mode)
(setq lsp-auto-guess-root t) ; no question for each project
(setq lsp-diagnostics-provider :none) ; wren has none, and Flymake would run the tree's Makefile
(lsp-register-client
 (make-lsp-client :new-connection (lsp-stdio-connection '("wren" "lsp"))
                  :activation-fn (lsp-activate-on "c" "cpp" "objective-c")
                  :server-id 'wren))
(add-to-list 'lsp-language-id-configuration '(objc-mode . "objective-c"))
(add-to-list 'lsp-disabled-clients 'clangd) ; without this line, clangd is asked instead
(add-hook 'c-mode-common-hook #'lsp)
(add-hook 'c-ts-base-mode-hook #'lsp)
