" Vim 8.1 or newer, or Neovim, with the plug-in vim-lsp: put these lines into ~/.vimrc.
filetype plugin on

function! WrenRoot(_) abort
  let path = lsp#utils#get_buffer_path()
  let markers = ['tags', '.git/', '.hg/', '.jj/', 'compile_commands.json', '.wren']
  let root = lsp#utils#find_nearest_parent_file_directory(path, markers)
  return lsp#utils#path_to_uri(empty(root) ? fnamemodify(path, ':h') : root)
endfunction

autocmd User lsp_setup call lsp#register_server({
  \ 'name': 'wren',
  \ 'cmd': ['wren', 'lsp'],
  \ 'root_uri': function('WrenRoot'),
  \ 'allowlist': ['c', 'cpp', 'objc', 'objcpp'],
  \ 'languageId': {_ -> get({'objc': 'objective-c', 'objcpp': 'objective-cpp'}, &filetype, &filetype)},
  \ })

function! WrenKeys() abort
  setlocal omnifunc=lsp#complete tagfunc=lsp#tagfunc " Control-x Control-o completes, Control-] goes to the definition
  nmap <buffer> K <plug>(lsp-hover)
  nmap <buffer> gr <plug>(lsp-references)
  nmap <buffer> gi <plug>(lsp-implementation)
  nmap <buffer> gs <plug>(lsp-workspace-symbol-search)
endfunction
autocmd User lsp_buffer_enabled call WrenKeys()
