-- Neovim 0.11 and newer: put these lines into ~/.config/nvim/init.lua, or this file into ~/.config/nvim/plugin/.
vim.lsp.config('wren', {
  cmd = { 'wren', 'lsp' },
  filetypes = { 'c', 'cpp', 'objc', 'objcpp' },
  get_language_id = function(_, type)
    return ({ objc = 'objective-c', objcpp = 'objective-cpp' })[type] or type
  end,
})
vim.lsp.enable('wren')
