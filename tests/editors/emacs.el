;;; What a person does in Emacs, in batch mode.  -*- lexical-binding: t -*-
;;; The client is Eglot or lsp-mode. Prints what it sees as lines "ANSWER name json".
(require 'json)
(require 'xref)

(defconst eglots (featurep 'eglot) "Whether the client is Eglot; else it is lsp-mode.")
(defconst patience 60 "Seconds; far more than any step takes, even with sanitizers on a busy machine.")

(defun answer (name value)
  (princ (format "ANSWER %s %s\n" name (json-encode value))))

(defun wait (what condition)
  "What CONDITION gives, once it gives something. Messages of the server are handled meanwhile."
  (let ((last (+ (float-time) patience)) found)
    (while (not (setq found (funcall condition)))
      (when (> (float-time) last)
        (error "Waited in vain for %s" what))
      (accept-process-output nil 0.02))
    found))

(defun go (piece)
  "Puts the point where | is in PIECE, which is in the text without it."
  (goto-char (point-min))
  (search-forward (replace-regexp-in-string "|" "" piece))
  (goto-char (+ (match-beginning 0) (string-match "|" piece))))

(defun place ()
  (format "%s:%d:%d" (file-name-nondirectory buffer-file-name) (line-number-at-pos) (1+ (current-column))))

(defun symbols (query)
  "The names of the project that have these letters; nil when there are none."
  (mapcar #'xref-item-summary (ignore-errors (xref-backend-apropos (if eglots 'eglot 'xref-lsp) query))))

(defun hover ()
  "What the echo area or its buffer says about the name at the point."
  (let (said)
    (if eglots
        (eglot-hover-eldoc-function (lambda (text &rest _) (setq said text)))
      (setq said (lsp--render-on-hover-content
                  (lsp:hover-contents (lsp-request "textDocument/hover" (lsp--text-document-position-params))) t)))
    (wait "the hover" (lambda () (and said (substring-no-properties said))))))

(defun server ()
  "Whether a server has this buffer."
  (if eglots
      (eglot-current-server)
    (and (lsp-workspaces) (eq (lsp--workspace-status (car (lsp-workspaces))) 'initialized))))

(find-file "near.c")
(run-hooks 'post-command-hook) ; as after each command: there Eglot starts its server
(wait "the server" #'server)

(go "Dist|ance")
(defun definition ()
  "Goes there; whether it is the one that only the index knows."
  (let ((this-command #'xref-find-definitions)) ; else it asks which name
    (ignore-errors (call-interactively #'xref-find-definitions)))
  (or (equal (file-name-nondirectory buffer-file-name) "far.c")
      (progn (unless (equal (file-name-nondirectory buffer-file-name) "near.c") (xref-pop-marker-stack)) nil)))
(wait "the definition in the index" #'definition)
(answer "definition" (place))
(xref-pop-marker-stack)
(answer "back" (place))

(answer "hover" (hover))

(goto-char (line-beginning-position))
(insert "bird->plu\n")
(backward-char)
(completion-at-point)
(answer "completion" (buffer-substring-no-properties (line-beginning-position) (line-end-position)))

(answer "symbols" (wait "a symbol" (lambda () (symbols "twi"))))
(call-process "sh" nil nil nil "-c" "echo 'int AddedLater;' >later.c")
(answer "later" (wait "a symbol that another program wrote" (lambda () (symbols "addedl"))))

(set-buffer-modified-p nil)
(unless (getenv "LEAVE_THE_SERVER")
  (if eglots (eglot-shutdown-all) (lsp-workspace-shutdown (car (lsp-workspaces)))))
(kill-emacs 0)
