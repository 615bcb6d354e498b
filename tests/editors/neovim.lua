-- What a person does in Neovim: runs in it, and prints what it sees as lines "ANSWER name json".
--
-- The story is a coroutine. Neovim handles keys and messages of the server while the story waits.
local patience = 60 * 1000 -- milliseconds

local function answer(name, value)
  io.stdout:write('ANSWER ', name, ' ', vim.fn.json_encode(value), '\n')
end

-- What the condition gives, once it gives something.
local function wait(what, condition)
  local last = vim.loop.now() + patience
  while true do
    local found = condition()
    if found then return found end
    if vim.loop.now() > last then error('waited in vain for ' .. what) end
    coroutine.yield()
  end
end

local function press(keys)
  vim.api.nvim_feedkeys(vim.api.nvim_replace_termcodes(keys, true, true, true), 't', false)
end

-- Puts the cursor onto the letter behind '|' in a piece of the text, which is in the text without it.
local function go(piece)
  local at = piece:find('|', 1, true)
  vim.fn.cursor(1, 1)
  if vim.fn.search('\\V' .. piece:gsub('|', ''), 'cW') == 0 then error('no ' .. piece) end
  vim.fn.cursor(vim.fn.line('.'), vim.fn.col('.') + at - 1)
end

local function place()
  return vim.fn.expand('%:t') .. ':' .. vim.fn.line('.') .. ':' .. vim.fn.col('.')
end

-- What is shown in windows above the text.
local function shown()
  for _, window in ipairs(vim.api.nvim_list_wins()) do
    if vim.api.nvim_win_get_config(window).relative ~= '' then
      return table.concat(vim.api.nvim_buf_get_lines(vim.api.nvim_win_get_buf(window), 0, -1, true), '\n')
    end
  end
end

-- The names in the list of symbols that the key for a search opens. Nothing found leaves the list as it was.
local function symbols(query)
  vim.cmd('cclose') -- an earlier list has the cursor, and its buffer no server
  vim.fn.setqflist({}, 'r')
  vim.lsp.buf.workspace_symbol(query)
  local last = vim.loop.now() + 1000
  local listed = function() return #vim.fn.getqflist() > 0 or vim.loop.now() > last end
  wait('an answer', listed)
  return table.concat(vim.tbl_map(function(each) return each.text end, vim.fn.getqflist()), '\n')
end

local function story()
  wait('the server', function() return next(vim.lsp.buf_get_clients(0)) end)

  go('|Distance')
  wait('the definition in the index', function()
    local tags = vim.lsp.tagfunc('Distance', 'c')
    return type(tags) == 'table' and #tags > 0 and tags[1].filename:find('far%.c$') -- else it is vim.NIL
  end)
  press('<C-]>')
  wait('the definition', function() return vim.fn.expand('%:t') ~= 'near.c' end)
  answer('definition', place())
  press('<C-t>')
  wait('the way back', function() return vim.fn.expand('%:t') == 'near.c' end)
  answer('back', place())

  go('Dist|ance')
  press('K')
  answer('hover', wait('the hover', shown))

  press('Obird->plu<C-x><C-o>')
  wait('completions', function() return #vim.fn.complete_info({ 'items' }).items > 0 end)
  press('<C-y><Esc>')
  wait('the end of typing', function() return vim.fn.mode() == 'n' end)
  answer('completion', vim.fn.getline('.'))

  answer('symbols', wait('a symbol', function()
    local found = symbols('twi')
    return found ~= '' and found
  end))
  vim.fn.system({ 'sh', '-c', 'echo "int AddedLater;" >later.c' })
  answer('later', wait('a symbol that another program wrote', function()
    local found = symbols('addedl')
    return found ~= '' and found
  end))
end

local running = coroutine.create(story)
local timer = vim.loop.new_timer()
timer:start(0, 20, vim.schedule_wrap(function()
  if coroutine.status(running) ~= 'suspended' then return end -- a wait for an answer runs timers, too
  local held, failure = coroutine.resume(running)
  if not held then
    io.stdout:write('FAILURE ', tostring(failure), '\n')
    vim.cmd('cquit 3')
  elseif coroutine.status(running) == 'dead' then
    vim.cmd('qall!')
  end
end))
