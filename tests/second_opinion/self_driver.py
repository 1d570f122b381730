"""A driver that answers from the second opinion itself, to try out compare.py without the library.

    python3 compare.py --driver 'python3 self_driver.py'
    python3 compare.py --driver 'python3 self_driver.py --slip'     answers wrongly now and then
    python3 compare.py --driver 'python3 self_driver.py --fall'     ends without an answer now and then
"""

import json
import sys

from compare import own_statement_answer, own_token_answer


def slip(answer: dict) -> None:
    """Calls pattern 8C what 6C is, and a comment a blank."""
    for pair in answer.get("pairs", []):
        if pair[2] == 170:
            pair[2] = 169
    for token in answer.get("tokens", []):
        if token[0] == 11:
            token[0] = 347


def main() -> None:
    own = own_token_answer if "--tokens" in sys.argv else own_statement_answer
    for line in sys.stdin.buffer:
        text = json.loads(line.decode())
        if "--fall" in sys.argv and "'" in text:
            sys.exit(3)
        answer = own(text)
        for error in answer.get("errors", []):
            if error["id"] == "platform":
                error["id"] = 9999
        if "--slip" in sys.argv:
            slip(answer)
        sys.stdout.write(json.dumps(answer, separators=(",", ":")) + "\n")


if __name__ == "__main__":
    main()
