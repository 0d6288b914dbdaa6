"""Made-up machines: Wine prefixes, copied from one, each with its own services and settings."""

from __future__ import annotations

import concurrent.futures
import dataclasses
import os
import pathlib
import shutil
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
FLEET = ROOT / "build" / "fleet"
PROGRAM = r"C:\windows\system32\vtncfg.exe"
SERVICES = r"HKLM\SYSTEM\CurrentControlSet\Services"

# Everything that the settings program writes to the registry lies below these.
WATCHED_KEYS = (SERVICES, r"HKLM\SOFTWARE\Vortan Lumora Agent", r"HKLM\SOFTWARE\Microsoft\Windows NT\CurrentVersion\AeDebug")


@dataclasses.dataclass(frozen=True)
class Machine:
    name: str
    group: str
    is_japanese: bool = False
    # Keys that are taken away before the machine is used.
    missing_keys: tuple[str, ...] = ()

    @property
    def prefix(self):
        return FLEET / "machines" / self.name

    @property
    def variables(self):
        """The environment in which its programs run."""
        language = {"LC_ALL": "ja_JP.UTF-8"} if self.is_japanese else {"LC_ALL": "C.UTF-8"}
        return {
            "WINEPREFIX": str(self.prefix),
            "WINEDEBUG": "-all",
            "WINEDLLOVERRIDES": "mscoree,mshtml,winedbg.exe=;netapi32=n,b",
            **language,
        }

    def run(self, *command, check=True, **options):
        return subprocess.run(command, env={**os.environ, **self.variables}, check=check, **options)

    def wine(self, *command, **options):
        return self.run("wine", *command, stdin=subprocess.DEVNULL, capture_output=True, **options)

    def start(self):
        """Makes the machine from the common one and brings its services up."""
        shutil.rmtree(self.prefix, ignore_errors=True)
        self.prefix.parent.mkdir(parents=True, exist_ok=True)
        base = FLEET / "base"
        subprocess.run(["cp", "-al", base, self.prefix], check=True)
        # Wine writes into the registry's files where they have a second name; every machine needs its own.
        for file in base.glob("*.reg"):
            subprocess.run(["cp", "--remove-destination", file, self.prefix], check=True)
        scripts = "drive_c/windows/SYSVOL"
        shutil.rmtree(self.prefix / scripts)
        shutil.copytree(base / scripts, self.prefix / scripts)
        self.run("wineserver", "-p", stdin=subprocess.DEVNULL)
        # The first program starts services that keep its output open.
        self.run("wine", "cmd", "/c", "exit", stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        kind = [] if self.group == "domain_controllers" else ["--member-server"]
        self.wine(r"C:\norvale\Machine.exe", "start", *kind)
        for key in self.missing_keys:
            self.wine("reg", "delete", key, "/f")

    def stop(self):
        self.run("wineserver", "-k", check=False, stdin=subprocess.DEVNULL)

    def registry(self):
        """What the settings program could have written, as text."""
        text = []
        for number, key in enumerate(WATCHED_KEYS):
            file = self.prefix / "drive_c" / f"export{number}.reg"
            file.unlink(missing_ok=True)
            self.wine("reg", "export", key, rf"C:\export{number}.reg", "/y", check=False)
            text.append(file.read_text(encoding="utf-16") if file.exists() else "")
        return "\n".join(text)

    def is_running(self, service):
        return "RUNNING" in self.wine("sc", "query", service, check=False).stdout.decode(errors="replace")


def make_base():
    """The machine of which all are copies; made once."""
    script = f"""
set -euo pipefail
source scripts/lib.sh
export WINEPREFIX={FLEET}/base
source scripts/demo.sh
make_machine
put "$BUILT/vtncfg.exe" "$WINDOWS/system32/vtncfg.exe"
stop_machine
wineserver -w
"""
    FLEET.mkdir(parents=True, exist_ok=True)
    subprocess.run(["bash", "-c", script], cwd=ROOT, check=True, stdin=subprocess.DEVNULL)


def start_all(machines):
    with concurrent.futures.ThreadPoolExecutor(max_workers=4) as pool:
        list(pool.map(Machine.start, machines))


def stop_all(machines):
    with concurrent.futures.ThreadPoolExecutor(max_workers=4) as pool:
        list(pool.map(Machine.stop, machines))


def registries(machines):
    with concurrent.futures.ThreadPoolExecutor(max_workers=4) as pool:
        return dict(zip((machine.name for machine in machines), pool.map(Machine.registry, machines)))
