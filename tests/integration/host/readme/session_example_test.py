"""Runs the Python session example of host/README.md as it stands there, on a
home with two libraries, and checks what it prints."""
import os
import re
import shutil
import subprocess
import sys
import tempfile

readme, host, sample = sys.argv[1], sys.argv[2], sys.argv[3]
text = open(readme, encoding="utf-8").read()
found = re.search(r"<!-- session-example -->\n```python\n(.*?)```\n<!-- end session-example -->", text, re.S)
if not found:
    sys.exit("host/README.md has no session example")
with tempfile.TemporaryDirectory() as folder:
    user = os.path.join(folder, "home", "user-88")
    os.makedirs(user)
    for name in ("blues.ocb", "reds.ocb"):
        shutil.copy(sample, os.path.join(user, name))
    script = os.path.join(folder, "example.py")
    with open(script, "w", encoding="utf-8") as out:
        out.write(found.group(1))
    run = subprocess.run([sys.executable, script, host, os.path.join(folder, "home")],
                         capture_output=True, text=True, timeout=120)
    expected = "['blues', 'reds']\n['reds']\n"
    if run.returncode != 0 or run.stdout != expected:
        sys.exit(f"exit {run.returncode}, printed {run.stdout!r} (expected {expected!r}), errors {run.stderr!r}")
print("the README's session example printed", repr(run.stdout))
