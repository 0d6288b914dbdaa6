#!/usr/bin/python3
"""The Ansible role of the management agents, run for real: ansible-playbook, the settings program, and machines that
differ as those of a house do.

    fleet_test.py            tests
    fleet_test.py --scale N  measures N machines with one to eight forks instead
"""

from __future__ import annotations

import argparse
import statistics
import subprocess
import sys
import time
import unittest

import machines
from machines import SERVICES, Machine
from playbook import ALL_AT_ONCE, IN_PAIRS, Run

# Two that cannot be configured among five that can.
FLEET = (
    Machine("dc1", "domain_controllers"),
    Machine("dc-japan", "domain_controllers", is_japanese=True),
    Machine("app1", "member_servers"),
    Machine("app2", "member_servers"),
    Machine("store1", "storage_servers"),
    Machine("locked", "member_servers", missing_keys=(r"HKLM\SOFTWARE\Vortan Lumora Agent",)),
    Machine("bare", "member_servers", missing_keys=tuple(
        rf"{SERVICES}\{service}" for service in ("VtMgHost", "VtMgServ", "VtMgStor", "VTNNicMgmt"))),
)
HEALTHY = [machine for machine in FLEET if not machine.missing_keys]
BROKEN = [machine for machine in FLEET if machine.missing_keys]


def names(group):
    return {machine.name for machine in group}


class Fleet(unittest.TestCase):
    """Each test finds new machines."""

    def setUp(self):
        machines.start_all(FLEET)
        self.addCleanup(machines.stop_all, FLEET)

    @staticmethod
    def roll_out(*options, restart="never"):
        return Run(FLEET, *options, playbook=ALL_AT_ONCE, variables={"norvale_agents_restart": restart})

    def test_a_check_changes_nothing_and_predicts_what_the_run_changes(self):
        before = machines.registries(FLEET)
        check = self.roll_out("--check", "--diff")
        self.assertEqual(machines.registries(FLEET), before)
        self.assertEqual(check.changed(), names(HEALTHY), check.output)

        run = self.roll_out("--diff")
        self.assertEqual(run.changed(), names(HEALTHY), run.output)
        after = machines.registries(FLEET)
        for machine in HEALTHY:
            self.assertEqual(run.changes(machine.name), check.changes(machine.name))
            self.assertEqual(run.settings[machine.name]["diff"], check.settings[machine.name]["diff"])
            self.assertNotEqual(after[machine.name], before[machine.name])
        self.assertIn('+snmp.serverRole: "Storage server"', run.output)

    def test_a_second_run_changes_nothing(self):
        self.roll_out()
        before = machines.registries(FLEET)
        second = self.roll_out()
        self.assertEqual(second.changed(), set(), second.output)
        self.assertEqual(machines.registries(FLEET), before)

    def test_a_broken_machine_fails_alone_and_says_why(self):
        before = machines.registries(BROKEN)
        run = self.roll_out()
        self.assertNotEqual(run.code, 0)
        self.assertEqual(run.failed(), names(BROKEN), run.output)
        self.assertEqual(run.changed(), names(HEALTHY))
        self.assertEqual(machines.registries(BROKEN), before)
        for machine in BROKEN:
            message = run.settings[machine.name]["msg"]
            self.assertTrue(message.startswith("vtncfg: "), message)
            self.assertIn(message, run.output)

    def test_a_rollout_in_steps_configures_every_machine(self):
        run = Run(HEALTHY, variables={"norvale_agents_restart": "never"})
        self.assertEqual(run.code, 0, run.output)
        self.assertEqual(run.changed(), names(HEALTHY), run.output)

    def test_a_rollout_stops_after_a_batch_in_which_too_many_fail(self):
        locked_first = sorted(FLEET, key=lambda machine: machine.name != "locked")
        run = Run(locked_first, variables={"norvale_agents_restart": "never"})
        self.assertEqual(set(run.settings), {"locked"}, run.output)

    def test_a_restart_touches_one_batch_after_the_other(self):
        run = Run(HEALTHY, playbook=IN_PAIRS, variables={"norvale_agents_restart": "always"})
        self.assertEqual(run.code, 0, run.output)
        done = sorted(run.settings.values(), key=lambda result: result["start"])
        batches = [done[start : start + 2] for start in range(0, len(done), 2)]
        for earlier, later in zip(batches, batches[1:]):
            self.assertLessEqual(max(result["end"] for result in earlier), min(result["start"] for result in later))
        for machine in HEALTHY:
            for service in ("SNMP", "VtMgHost", "VtMgStor"):
                self.assertTrue(machine.is_running(service), f"{service} of {machine.name}")

    def test_agents_are_restarted_only_where_a_setting_was_changed(self):
        self.roll_out()
        start = time.monotonic()
        run = self.roll_out(restart="when_needed")
        self.assertEqual(run.changed(), set(), run.output)
        self.assertLess(time.monotonic() - start, 20, "nothing was to be restarted")


def measure(count):
    """Time of a run that changes every machine, and what the settings program alone takes of it."""
    fleet = [Machine(f"server{number:02}", "member_servers") for number in range(count)]
    print(f"{count} machines: forks, seconds of a run, seconds for each machine")
    machines.start_all(fleet)
    try:
        for number, forks in enumerate((1, 2, 4, 8)):
            role = {"norvale_group_settings": {"snmp": {"serverRole": f"Round {number}"}}}
            start = time.monotonic()
            run = Run(fleet, playbook=ALL_AT_ONCE, forks=forks, variables={"norvale_agents_restart": "never", **role})
            seconds = time.monotonic() - start
            assert run.changed() == names(fleet), run.output
            print(f"{forks} {seconds:.1f} {seconds / count:.2f}")
        print(f"the settings program alone: {statistics.median(time_of_get(machine) for machine in fleet):.2f}")
    finally:
        machines.stop_all(fleet)


def time_of_get(machine):
    start = time.monotonic()
    machine.wine(machines.PROGRAM, "get")
    return time.monotonic() - start


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--scale", type=int, metavar="N")
    arguments, others = parser.parse_known_args()
    try:
        machines.make_base()
    except subprocess.CalledProcessError:
        sys.exit("the machine of which the fleet is made could not be made")
    if arguments.scale:
        measure(arguments.scale)
    else:
        unittest.main(argv=[sys.argv[0], *others], verbosity=2)


if __name__ == "__main__":
    main()
