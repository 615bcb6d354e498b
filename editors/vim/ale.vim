" Vim 8 or newer, or Neovim, with the plug-in ALE: put these lines into ~/.vimrc.
filetype plugin on

function! WrenRoot(buffer) abort
  let here = expand('#' . a:buffer . ':p:h')
  let found = filter([finddir('.git', here . ';'), findfile('tags', here . ';')], '!empty(v:val)')
  return empty(found) ? here : fnamemodify(found[0], ':p:s?/$??:h')
endfunction

function! WrenDefine() abort
  let languages = {'c': 'c', 'cpp': 'cpp', 'objc': 'objective-c', 'objcpp': 'objective-cpp'}
  for [type, language] in items(languages)
    call ale#linter#Define(type, {
      \ 'name': 'wren',
      \ 'lsp': 'stdio',
      \ 'executable': 'wren',
      \ 'command': '%e lsp',
      \ 'language': language,
      \ 'project_root': function('WrenRoot'),
      \ })
  endfor
endfunction
autocmd VimEnter * call WrenDefine()

let g:ale_linters = {'c': ['wren'], 'cpp': ['wren'], 'objc': ['wren'], 'objcpp': ['wren']}
autocmd FileType c,cpp,objc,objcpp setlocal omnifunc=ale#completion#OmniFunc " Control-x Control-o completes
nmap gd <plug>(ale_go_to_definition)
nmap gr <plug>(ale_find_references)
nmap K <plug>(ale_hover)
