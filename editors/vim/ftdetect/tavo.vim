" Files of masking statements.
autocmd BufRead,BufNewFile *.tavo,*.masks setfiletype tavo
