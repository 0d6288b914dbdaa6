"""Runs a playbook of the examples against made-up machines."""

from __future__ import annotations

import collections
import json
import os
import shutil
import subprocess
import tempfile

from machines import FLEET, PROGRAM, ROOT

ANSIBLE = ROOT / "deploy" / "ansible"

# The example's, and those that only the tests need.
ROLLOUT = ANSIBLE / "examples" / "rollout.yml"
ALL_AT_ONCE = ROOT / "tests" / "fleet" / "all_at_once.yml"
IN_PAIRS = ROOT / "tests" / "fleet" / "in_pairs.yml"


def write_inventory(machines, directory):
    """The example's groups with these machines in them, reached by a local connection instead of over the network."""
    groups = collections.defaultdict(dict)
    for machine in machines:
        command = ["env", *(f"{name}={value}" for name, value in machine.variables.items()), "wine", PROGRAM]
        groups[machine.group][machine.name] = {
            "ansible_connection": "local",
            "ansible_python_interpreter": "/usr/bin/python3",
            "norvale_agents_command": command,
            "norvale_agents_command_module": "ansible.builtin.command",
            "norvale_agents_copy_module": "ansible.builtin.copy",
        }
    inventory = {"norvale_servers": {"children": {group: {"hosts": hosts} for group, hosts in groups.items()}}}
    (directory / "inventory.json").write_text(json.dumps(inventory))
    shutil.copytree(ANSIBLE / "examples" / "group_vars", directory / "group_vars")
    return directory / "inventory.json"


class Run:
    """One run of ansible-playbook: its exit code, its output, and what became of the settings on each machine."""

    def __init__(self, machines, *options, playbook=ROLLOUT, forks=4, variables=None):
        with tempfile.TemporaryDirectory(dir=FLEET) as name:
            directory = FLEET / name
            results = directory / "results"
            results.touch()
            environment = {
                **os.environ,
                "ANSIBLE_ROLES_PATH": str(ANSIBLE / "roles"),
                "ANSIBLE_CALLBACK_PLUGINS": str(ROOT / "tests" / "fleet" / "callback_plugins"),
                "ANSIBLE_CALLBACKS_ENABLED": "results",
                "ANSIBLE_LOCALHOST_WARNING": "false",
                "ANSIBLE_NOCOLOR": "true",
                "ANSIBLE_LOCAL_TEMP": str(directory / "local"),
                "ANSIBLE_REMOTE_TEMP": str(directory / "remote"),
                "VTN_FLEET_RESULTS": str(results),
            }
            command = [
                "ansible-playbook", "-i", write_inventory(machines, directory), "--forks", str(forks),
                "--extra-vars", json.dumps(variables or {}), *options, playbook,
            ]
            done = subprocess.run(command, env=environment, capture_output=True, text=True, stdin=subprocess.DEVNULL, check=False)
            lines = [json.loads(line) for line in results.read_text().splitlines()]
        self.code = done.returncode
        self.output = done.stdout + done.stderr
        self.settings = {line["host"]: line for line in lines if line["task"].endswith("Apply the settings")}

    def changes(self, name):
        return self.settings[name]["changes"]

    def failed(self):
        return {name for name, result in self.settings.items() if result["failed"]}

    def changed(self):
        return {name for name, result in self.settings.items() if result["changed"]}
