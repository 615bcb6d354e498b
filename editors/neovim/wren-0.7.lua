-- Neovim 0.7 to 0.10: put these lines into ~/.config/nvim/init.lua, or this file into ~/.config/nvim/plugin/.
local client

local function attached(_, buffer)
  vim.bo[buffer].omnifunc = 'v:lua.vim.lsp.omnifunc' -- Control-x Control-o completes
  vim.bo[buffer].tagfunc = 'v:lua.vim.lsp.tagfunc' -- Control-] goes to the definition, Control-t back
  local function map(keys, what) vim.keymap.set('n', keys, what, { buffer = buffer }) end
  map('K', vim.lsp.buf.hover)
  map('grr', vim.lsp.buf.references)
  map('gri', vim.lsp.buf.implementation)
  map('grn', vim.lsp.buf.rename)
  map('gO', vim.lsp.buf.document_symbol)
  map('gW', vim.lsp.buf.workspace_symbol)
end

vim.api.nvim_create_autocmd('FileType', {
  pattern = { 'c', 'cpp', 'objc', 'objcpp' },
  callback = function(event)
    if not (client and vim.lsp.get_client_by_id(client)) then
      client = vim.lsp.start_client({
        name = 'wren',
        cmd = { 'wren', 'lsp' },
        get_language_id = function(_, type)
          return ({ objc = 'objective-c', objcpp = 'objective-cpp' })[type] or type
        end,
        on_attach = attached,
      })
    end
    vim.lsp.buf_attach_client(event.buf, client)
  end,
})
