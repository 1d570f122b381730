" What Vim highlights how, asked of Vim itself. Run by Vim and by Neovim.
let s:failed = 0

function! s:Say(text) abort
  if has('nvim')
    call writefile([a:text], '/dev/stdout', 'a')
  else
    verbose echo a:text
  endif
endfunction

" Every column of `word`, the nth of it in the line, belongs to the group.
function! s:Expect(lnum, word, group) abort
  let start = stridx(getline(a:lnum), a:word)
  for column in range(start + 1, start + len(a:word))
    let found = synIDattr(synID(a:lnum, column, 1), 'name')
    if found !=# a:group
      call s:Say(printf('FAILED: %s of line %d is %s, not %s', a:word, a:lnum, found, a:group))
      let s:failed = 1
      return
    endif
  endfor
endfunction

filetype plugin on
syntax on
enew
call setline(1, [
  \ '# a comment of the file',
  \ 'PRO=HASH, DSTFLD=CUSTOMER, algo = sha256 // why',
  \ 'provider=Affinity, SEED="a\"b, MTD=REP", KEY=@MASK, LEN=12 /* what */',
  \ 'PRO=CCN, FLDDEF12=(NAME=HASHX, DT=VARCHAR)',
  \ 'PRO=AFF, MTD=REP, WHENMATCH=PREFIX("x"), SEED=#FIELD',
  \ 'LIB=mine, LEVEL=3',
  \ ])
file masks.tavo
doautocmd BufRead
if &filetype !=# 'tavo'
  call s:Say('FAILED: the file type is ' . &filetype)
  let s:failed = 1
endif
call s:Expect(1, '# a comment of the file', 'tavoComment')
call s:Expect(2, 'PRO', 'tavoStatement')
call s:Expect(2, 'HASH', 'tavoName')
call s:Expect(2, 'DSTFLD', 'tavoOption')
call s:Expect(2, 'CUSTOMER', 'tavoWord')
call s:Expect(2, 'algo', 'tavoOption')
call s:Expect(2, 'sha256', 'tavoValue')
call s:Expect(2, '// why', 'tavoComment')
call s:Expect(3, 'Affinity', 'tavoName')
call s:Expect(3, '"a\"b, MTD=REP"', 'tavoString')
call s:Expect(3, '@MASK', 'tavoVariable')
call s:Expect(3, '12', 'tavoNumber')
call s:Expect(3, '/* what */', 'tavoComment')
call s:Expect(4, 'FLDDEF12', 'tavoOption')
call s:Expect(4, 'NAME', 'tavoOption')
call s:Expect(4, 'HASHX', 'tavoWord')
call s:Expect(4, 'VARCHAR', 'tavoValue')
call s:Expect(5, 'PREFIX', 'tavoFunction')
call s:Expect(5, '#FIELD', 'tavoVariable')
call s:Expect(6, 'LIB', 'tavoStatement')

" The plug-in's settings, and what :make finds.
if &commentstring !=# '// %s' || &formatprg !~# '^tavo fmt --file - '
  call s:Say('FAILED: the settings of the file type are not there')
  let s:failed = 1
endif
cgetexpr system($TAVO . ' check --color never -', "PRO=CCN\nPRO=HASH, AGLO=SHA256\n")
let s:found = filter(getqflist(), 'v:val.valid')
if empty(s:found) || s:found[0].lnum != 2 || s:found[0].col < 9
  call s:Say('FAILED: errorformat finds ' . string(getqflist()))
  let s:failed = 1
endif

" The same by the commands that people type.
let $PATH = fnamemodify($TAVO, ':p:h') . ':' . $PATH
let s:file = tempname() . '.tavo'
call writefile(['PRO=CCN', 'PRO=HASH, AGLO=SHA256'], s:file)
execute 'edit! ' . fnameescape(s:file)
silent make!
let s:found = filter(getqflist(), 'v:val.valid')
if empty(s:found) || s:found[0].lnum != 2 || s:found[0].col < 9
  call s:Say('FAILED: :make finds ' . string(getqflist()))
  let s:failed = 1
endif
call setline(1, ['pro = CCN,cp=1', 'pro=xyz', 'pro=CCN'])
silent normal! gggqG
if getline(1, '$') !=# ['PRO=CCN, CP=1', 'pro=xyz', 'PRO=CCN']
  call s:Say('FAILED: gq gives ' . string(getline(1, '$')))
  let s:failed = 1
endif
call delete(s:file)
if s:failed
  cquit
endif
qall!
