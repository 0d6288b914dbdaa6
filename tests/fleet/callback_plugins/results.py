"""Writes what became of each task on each host as a line of JSON, for the test that runs the playbook."""

from __future__ import annotations

import json
import os
import time

from ansible.plugins.callback import CallbackBase

DOCUMENTATION = """
name: results
type: notification
short_description: results of tasks as lines of JSON
description: Appends them to the file that VTN_FLEET_RESULTS names.
"""


class CallbackModule(CallbackBase):
    CALLBACK_VERSION = 2.0
    CALLBACK_TYPE = "notification"
    CALLBACK_NAME = "results"

    def __init__(self):
        super().__init__()
        self._started = {}

    def v2_runner_on_start(self, host, task):
        self._started[host.name, task._uuid] = time.time()

    def v2_runner_on_ok(self, result):
        self._write(result, failed=False)

    def v2_runner_on_failed(self, result, ignore_errors=False):
        self._write(result, failed=True)

    def v2_runner_on_unreachable(self, result):
        self._write(result, failed=True)

    def _write(self, result, failed):
        answer = result._result
        line = {
            "host": result._host.name,
            "task": result._task.get_name(),
            "start": self._started.get((result._host.name, result._task._uuid)),
            "end": time.time(),
            **{key: answer.get(key) for key in ("changed", "msg", "changes", "diff", "state")},
            "failed": failed,
        }
        with open(os.environ["VTN_FLEET_RESULTS"], "a", encoding="utf-8") as results:
            results.write(json.dumps(line) + "\n")
