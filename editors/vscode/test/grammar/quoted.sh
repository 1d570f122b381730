# SYNTAX TEST "source.shell" "a statement as an argument"

tavo parse 'PRO=CCN, PAT=6C'
#           ^^^ keyword.control.statement.tavo
#                    ^^^ entity.other.attribute-name.tavo
#                        ^^ constant.language.tavo
