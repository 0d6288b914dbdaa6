"""Copies a file to the server and, when the file there was another, runs the command that installs it.

Which modules copy and run is the caller's to say, so that this works on any server on which the program does.
"""

from __future__ import annotations

from ansible.plugins.action import ActionBase

# What an installation may end with: done; done, but for files in use, which Windows replaces at its next start.
DONE = (0, 3010)


class ActionModule(ActionBase):
    """norvale_agents_install: source, path, copy_module; command (list) and command_module where it is installed."""

    TRANSFERS_FILES = True
    _supports_check_mode = True

    def run(self, tmp=None, task_vars=None):
        super().run(tmp, task_vars)
        result = self._copy(task_vars)
        command = self._task.args.get("command")
        if result.get("failed") or not result.get("changed") or not command or self._task.check_mode:
            return result
        answer = self._execute_module(
            module_name=self._task.args["command_module"], module_args={"argv": command}, task_vars=task_vars
        )
        code = answer.get("rc")
        if code not in DONE:
            result.update(failed=True, msg=f"the installation ended with exit code {code}", answer=answer)
        return result

    def _copy(self, task_vars):
        """Runs the copying module's own action, which brings the file from here."""
        task = self._task.copy()
        task.args = {"src": self._task.args["source"], "dest": self._task.args["path"]}
        name = self._task.args["copy_module"]
        action = self._shared_loader_obj.action_loader.get(
            name,
            task=task,
            connection=self._connection,
            play_context=self._play_context,
            loader=self._loader,
            templar=self._templar,
            shared_loader_obj=self._shared_loader_obj,
        )
        if action is None:
            return {"failed": True, "msg": f"there is no module {name} on the control node"}
        return action.run(task_vars=task_vars)
