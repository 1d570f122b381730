" Comments, formatting with `tavo fmt`, checking with `tavo check`.
if exists('b:did_ftplugin')
  finish
endif
let b:did_ftplugin = 1

setlocal comments=s1:/*,mb:*,ex:*/,://,:#
setlocal commentstring=//\ %s
" The messages about wrong statements, which stay as they are, would end up in the text.
setlocal formatprg=tavo\ fmt\ --file\ -\ 2>/dev/null
setlocal makeprg=tavo\ check\ --color\ never\ %:S
setlocal errorformat=%f:%l:%c:\ %trror%.%#\ %n:\ %m
setlocal errorformat+=%f:%l:%c:\ %trror%.%#:\ %m
setlocal errorformat+=%f:%l:%c:\ %tarning%.%#:\ %m
setlocal errorformat+=%-G%.%#

let b:undo_ftplugin = 'setlocal comments< commentstring< formatprg< makeprg< errorformat<'
