-- SYNTAX TEST "source.sql" "a statement quoted in SQL"

insert into masks values ('PRO=HASH, DSTFLD=X, ALGO=SHA256', 'CP=1');
--                         ^^^ keyword.control.statement.tavo
--                             ^^^^ entity.name.type.provider.tavo
--                                   ^^^^^^ entity.other.attribute-name.tavo
--                                             ^^^^ entity.other.attribute-name.tavo
--                                                  ^^^^^^ constant.language.tavo
--                                                            ^^ - entity.other.attribute-name.tavo

insert into masks values ("PRO=EML, DOM=""a b"", MTD=HASH, ALGO=SHA256", "CP=1");
--                         ^^^ keyword.control.statement.tavo
--                             ^^^ entity.name.type.provider.tavo
--                                  ^^^ entity.other.attribute-name.tavo
--                                      ^^^^^^^ string.quoted.double.tavo
--                                               ^^^ entity.other.attribute-name.tavo
--                                                   ^^^^ constant.language.tavo
--                                                              ^^^^^^ constant.language.tavo
--                                                                        ^^ - entity.other.attribute-name.tavo
