" What a person does in Vim with ALE: prints what is seen as lines "ANSWER name json". Run by "vim -c 'source ...'".
set nomore hidden
const s:patience = 60 " seconds; far more than any step takes

function! s:Answer(name, value) abort
  call writefile(['', 'ANSWER ' . a:name . ' ' . json_encode(a:value)], '/dev/stdout', 'a')
endfunction

" What the condition gives, once it gives something, or nothing at the end. Messages of the server are handled
" meanwhile.
function! s:Within(seconds, Condition) abort
  let start = reltime()
  let found = a:Condition()
  while empty(found) && reltimefloat(reltime(start)) < a:seconds
    sleep 20m
    let found = a:Condition()
  endwhile
  return found
endfunction

function! s:Wait(what, Condition) abort
  let found = s:Within(s:patience, a:Condition)
  if empty(found)
    throw 'waited in vain for ' . a:what
  endif
  return found
endfunction

function! s:Place() abort
  return expand('%:t') . ':' . line('.') . ':' . col('.')
endfunction

" Whether the key leads to the definition that only the index knows.
function! s:Definition() abort
  buffer near.c
  call cursor(5, 14)
  normal gd
  call s:Within(1, {-> s:Place() !=# 'near.c:5:14'})
  return expand('%:t') ==# 'far.c'
endfunction

" What the key for a hover shows in the preview window.
function! s:Hover() abort
  normal K
  call s:Within(2, {-> winnr('$') > 1})
  let windows = filter(range(1, winnr('$')), 'getwinvar(v:val, "&previewwindow")')
  let texts = map(windows, 'getbufline(winbufnr(v:val), 1, "$")')
  pclose
  return empty(texts) ? '' : join(texts[0], "\n")
endfunction

function! s:Story() abort
  call s:Wait('the definition in the index', function('s:Definition'))
  call s:Answer('definition', s:Place())
  execute "normal! \<C-o>"
  call s:Answer('back', s:Place())
  call s:Answer('hover', s:Wait('the hover', function('s:Hover')))
  call s:Answer('completion', &omnifunc)
endfunction

function! s:Run(timer) abort
  try
    call s:Story()
  catch
    call writefile([v:exception, v:throwpoint], '/dev/stdout', 'a')
    cquit
  endtry
  qall!
endfunction

autocmd VimEnter * call timer_start(0, function('s:Run'))
