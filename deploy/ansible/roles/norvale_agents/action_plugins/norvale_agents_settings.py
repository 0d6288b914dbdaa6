"""Brings the agents' settings to what a task asks for, through `vtncfg` on the server.

The program answers with lines of JSON, from which this makes what Ansible shows: whether anything changed, which members,
and a diff. In check mode the program is asked what it would do, which writes nothing.
"""

from __future__ import annotations

import json

from ansible.module_utils.common.text.converters import to_text
from ansible.plugins.action import ActionBase

RESTARTS = ("always", "when_needed", "never")


def sentence_of(answer):
    """What the program says of its failure: the last line on standard error, or else what the module says."""
    lines = to_text(answer.get("stderr") or "").strip().splitlines()
    return lines[-1] if lines else answer.get("msg", "the settings program ended without a word")


def diff_of(changes):
    """The changed members as Ansible's --diff shows them."""

    def lines(which):
        return "".join(f"{change['path']}: {json.dumps(change[which], ensure_ascii=False)}\n" for change in changes)

    return {"before_header": "settings", "after_header": "settings", "before": lines("old"), "after": lines("new")}


class ActionModule(ActionBase):
    """norvale_agents_settings: settings (dict), restart, command (list), module."""

    _supports_check_mode = True

    def run(self, tmp=None, task_vars=None):
        result = super().run(tmp, task_vars)
        arguments = self._task.args
        restart = arguments.get("restart", "when_needed")
        if restart not in RESTARTS:
            return {**result, "failed": True, "msg": f"restart is {restart!r}, none of {', '.join(RESTARTS)}"}
        is_check = self._task.check_mode

        call = ["set", "--changes"]
        if is_check:
            call.append("--what-if")
        elif restart == "when_needed":
            call.append("--restart")
        answer = self._run_program(call, task_vars, json.dumps(arguments["settings"]))
        result.update(self._read(answer))
        if result["failed"] or is_check or restart != "always":
            return result

        answer = self._run_program(["restart"], task_vars)
        result["changed"] = True
        if answer.get("rc") != 0:
            result.update(failed=True, msg=sentence_of(answer))
        return result

    def _run_program(self, call, task_vars, document=None):
        """Runs the program on the server, in check mode too: it is told to write nothing there."""
        arguments = {"argv": [*self._task.args["command"], *call]}
        if document is not None:
            arguments["stdin"] = document
        was_check = self._task.check_mode
        self._task.check_mode = False
        try:
            return self._execute_module(
                module_name=self._task.args["module"], module_args=arguments, task_vars=task_vars
            )
        finally:
            self._task.check_mode = was_check

    @staticmethod
    def _read(answer):
        """What the program answered, as a task's result. What it wrote before a failure counts as changed."""
        lines = to_text(answer.get("stdout") or "").splitlines()
        changes = json.loads(lines[2]) if len(lines) > 2 else []
        result = {"failed": answer.get("rc") != 0, "changed": bool(changes), "changes": changes}
        if lines:
            result["state"] = json.loads(lines[0])
        if changes:
            result["diff"] = diff_of(changes)
        if result["failed"]:
            result["msg"] = sentence_of(answer)
            result["changed"] = result["changed"] or "Written before:" in result["msg"]
        if answer.get("unreachable"):
            result["unreachable"] = True
        return result
