# SYNTAX TEST "source.shell" "a statement as an argument"

tavo parse 'PRO=CCN, PAT=6C'
#           ^^^ keyword.control.statement.tavo
#                    ^^^ entity.other.attribute-name.tavo
#                        ^^ constant.language.tavo

tavo parse "PRO=HASH, SRC=\"PRO=X, A\", DSTFLD=$FIELD, ALGO=SHA256" DSTFLD=x
#           ^^^ keyword.control.statement.tavo
#               ^^^^ entity.name.type.provider.tavo
#                     ^^^ entity.other.attribute-name.tavo
#                         ^^^^^^^^^^^^ string.quoted.double.tavo
#                                       ^^^^^^ entity.other.attribute-name.tavo
#                                                      ^^^^ entity.other.attribute-name.tavo
#                                                           ^^^^^^ constant.language.tavo
#                                                                   ^^^^^^ - entity.other.attribute-name.tavo
echo "PRO=HASH, SRC=\"not closed" ALGO=SHA256
#               ^^^ entity.other.attribute-name.tavo
#                   ^^^^^^^^^^^^ string.quoted.double.tavo
#                                 ^^^^ - entity.other.attribute-name.tavo
echo "PRO=HASH, SEED=#\"a b\", DSTFLD=X"
#                    ^^^^^^^^ variable.other.field.tavo
#                              ^^^^^^ entity.other.attribute-name.tavo
