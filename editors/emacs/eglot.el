;;; Emacs with Eglot: put these lines into ~/.emacs.d/init.el.
;;; Emacs 29 and newer have Eglot; for older ones, M-x package-install eglot, or Debian's package elpa-eglot.
(require 'eglot)
(setq eglot-server-programs
      (append '((((c-mode :language-id "c") (c-ts-mode :language-id "c")) "wren" "lsp")
                (((c++-mode :language-id "cpp") (c++-ts-mode :language-id "cpp")) "wren" "lsp")
                (((objc-mode :language-id "objective-c")) "wren" "lsp"))
              eglot-server-programs))
(add-hook 'c-mode-common-hook 'eglot-ensure)
(add-hook 'c-ts-base-mode-hook 'eglot-ensure)
