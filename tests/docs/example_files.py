"""The files that examples in help texts, the man page and the documentation work on."""
import pathlib
import subprocess

FILES = {
    "jobs/crm.masks": """PRO=HASH, DSTFLD=CUSTNO, SEED=HMAC, ALGO=SHA256

PRO=EML, MTD=HASH, ALGO=SHA256
PRO=HASH, DSTFLD=BRANCH, SEED="4712", ALGO=SHA256
""",
    "jobs-old/crm.masks": """PRO=HASH, DSTFLD=BRANCH, SEED="4711", ALGO=DEFAULT
PRO=HASH, DSTFLD=CUSTNO, SEED=HMAC, ALGO=SHA256
PRO=EML, MTD=HASH, ALGO=SHA256
""",
    "release/jobs/crm.masks": "PRO=CCN\n",
    "masks/a.txt": "pro=hash,dstfld=X\n",
    "masks/b.txt": "PRO=EML\n",
    "masks.txt": "PRO=HASH, AGLO=SHA256, DSTFLD=X\nPRO=HASH,, DSTFLD=Y\n",
    "masks-old.txt": "PRO=HASH, DSTFLD=X\n",
    "statement.txt": "pro=hash,dstfld=X",
    "job.cfg": "-- a job\nPRO=HASH,\nDSTFLD=X\n-- the end\n",
    "docs/language.md": "",
}


def make(folder):
    """Into a folder that is a repository of git with one commit on the branch main."""
    folder = pathlib.Path(folder)
    for name, text in FILES.items():
        (folder / name).parent.mkdir(parents=True, exist_ok=True)
        (folder / name).write_text(text, encoding="utf-8")
    git = ["git", "-c", "user.name=x", "-c", "user.email=x@example.org", "-c", "init.defaultBranch=main"]
    for command in (["init", "-q"], ["add", "."], ["commit", "-q", "-m", "x"]):
        subprocess.run(git + command, cwd=folder, check=True, stdout=subprocess.DEVNULL)
    with open(folder / "jobs/crm.masks", "a", encoding="utf-8") as file:
        file.write("\n")
