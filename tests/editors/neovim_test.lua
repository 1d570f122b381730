-- Neovim as a client of the server: a second Neovim is typed into as a user would.
local inner = vim.fn.jobstart({
  vim.v.progpath, '--clean', '--embed', '--headless', '-n',
  '--cmd', 'set runtimepath^=' .. vim.env.TAVO_EDITORS .. '/vim',
}, { rpc = true })
local folder = vim.fn.tempname()
vim.fn.mkdir(folder, 'p')
local file = folder .. '/masks.tavo'

local function fail(text)
  io.stdout:write('FAILED: ' .. text .. '\n')
  vim.fn.jobstop(inner)
  vim.fn.delete(folder, 'rf')
  vim.cmd('cquit 1')
end

local function lua(code, ...)
  return vim.rpcrequest(inner, 'nvim_exec_lua', code, { ... })
end

local function type_keys(keys)
  vim.rpcrequest(inner, 'nvim_input', keys)
end

local function wait_for(what, code)
  local last
  local met = vim.wait(20000, function()
    local busy = vim.rpcrequest(inner, 'nvim_get_mode').blocking
    if busy then return false end
    last = lua(code)
    return last == true
  end, 50)
  if not met then
    fail(what .. '; the buffer is: ' .. vim.inspect(lua('return vim.api.nvim_buf_get_lines(0, 0, -1, false)'))
      .. ' and the diagnostics are: ' .. vim.inspect(lua([[
        return vim.tbl_map(function(d) return d.message end, vim.diagnostic.get(0))]])))
  end
end

local function expect(what, wanted, found)
  if not vim.deep_equal(wanted, found) then
    fail(what .. ': wanted ' .. vim.inspect(wanted) .. ', found ' .. vim.inspect(found))
  end
end

local function lines()
  return lua('return vim.api.nvim_buf_get_lines(0, 0, -1, false)')
end

-- ---- attach -------------------------------------------------------------------------------------
lua([[
  local file, tavo = ...
  vim.cmd('filetype plugin on')
  vim.cmd('syntax on')
  vim.opt.completeopt = 'menuone,noselect'
  vim.ui.select = function(items, _, choose) choose(items[1], 1) end
  vim.cmd('edit ' .. file)
  local server = { name = 'tavo', cmd = { tavo, 'lsp' }, root_dir = vim.fn.getcwd() }
  local id
  if vim.lsp.start then  -- from 0.8 on
    id = vim.lsp.start(server)
  else
    id = vim.lsp.start_client(server)
    vim.lsp.buf_attach_client(0, id)
  end
  vim.bo.omnifunc = 'v:lua.vim.lsp.omnifunc'
  _G.clients = vim.lsp.get_clients or vim.lsp.get_active_clients
  _G.client = function() return vim.lsp.get_client_by_id(id) end
]], file, vim.env.TAVO)
expect('the file type', 'tavo', lua('return vim.bo.filetype'))
wait_for('the server starts', [[
  local client = _G.client()
  return client ~= nil and client.initialized == true]])
expect('the encoding', 'utf-16', lua([[
  return _G.client().server_capabilities.positionEncoding]]))

-- ---- type, see diagnostics ----------------------------------------------------------------------
type_keys('iPRO=HASH, /* \240\159\152\128 */ AGLO=SHA256<Esc>')
wait_for('a diagnostic', 'return #vim.diagnostic.get(0) == 1')
local misspelt = lua([[
  for _, each in ipairs(vim.diagnostic.get(0)) do
    if each.code == 'unknown-option' then return { each.lnum, each.col, each.end_col } end
  end]])
-- Neovim counts bytes; the face has four.
expect('where the misspelt option is', { 0, 21, 25 }, misspelt)

-- ---- apply a fix --------------------------------------------------------------------------------
lua('vim.api.nvim_win_set_cursor(0, { 1, 23 })')
lua('vim.lsp.buf.code_action({ context = { only = { "quickfix" } } })')
wait_for('the fix is applied', [[
  return vim.api.nvim_get_current_line():find('ALGO=SHA256', 1, true) ~= nil]])
wait_for('the missing option is reported', [[
  local all = vim.diagnostic.get(0)
  return #all == 1 and all[1].code ~= 'unknown-option']])

-- ---- accept a completion ------------------------------------------------------------------------
type_keys('A, DST<C-x><C-o>')
wait_for('the completion is shown', 'return vim.fn.pumvisible() == 1')
type_keys('<C-n><C-y>X<Esc>')
wait_for('no diagnostic is left', 'return #vim.diagnostic.get(0) == 0')
local line = lines()[1]
if not line:find(', DSTFLD=X', 1, true) then fail('the completion gives ' .. line) end

-- ---- hover --------------------------------------------------------------------------------------
local hover = lua([[
  vim.api.nvim_win_set_cursor(0, { 1, 4 })
  local answers = vim.lsp.buf_request_sync(0, 'textDocument/hover', vim.lsp.util.make_position_params(), 10000)
  for _, answer in pairs(answers) do return answer.result.contents.value end]])
if not hover:find('Turns one or more source columns', 1, true) then fail('hover shows ' .. hover) end

-- ---- format -------------------------------------------------------------------------------------
type_keys('opro = ccn,cp=1<Esc>')
wait_for('the second line is typed', 'return #vim.api.nvim_buf_get_lines(0, 0, -1, false) == 2')
lua([[
  if vim.lsp.buf.format then vim.lsp.buf.format({ timeout_ms = 10000 })
  else vim.lsp.buf.formatting_sync(nil, 10000) end]])
expect('the formatted line', 'PRO=ccn, CP=1', lines()[2])

-- ---- the end ------------------------------------------------------------------------------------
lua([[vim.lsp.stop_client(_G.clients())]])
wait_for('the server ends', 'return #_G.clients() == 0')
vim.fn.jobstop(inner)
vim.fn.delete(folder, 'rf')
io.stdout:write('Neovim ' .. tostring(vim.version().major) .. '.' .. tostring(vim.version().minor) .. ': all well\n')
vim.cmd('qall!')
