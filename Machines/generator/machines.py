"""The shipped machines by file name, and what the story of each says must be seen in it."""

from . import day, helper, laptops, network, silicon, smc, workloads
from .physics import Physics, ordinary_sensors, silicon_watts, states

BUILDERS = {
    "day-of-work": day.day_of_work,
    "desktop-fans": workloads.desktop_fans,
    "helper-installed": helper.helper_installed,
    "laptop-charging": laptops.laptop_charging,
    "laptop-draining-on-ac": laptops.laptop_draining_on_ac,
    "laptop-fanless-hid": laptops.laptop_fanless_hid,
    "laptop-full-on-ac": laptops.laptop_full_on_ac,
    "laptop-heavy-load": laptops.laptop_heavy_load,
    "laptop-hot": laptops.laptop_hot,
    "laptop-lid-closed": laptops.laptop_lid_closed,
    "laptop-unplugged": laptops.laptop_unplugged,
    "network-busy": network.network_busy,
    "no-energy-library": silicon.no_energy_library,
    "process-heavy": workloads.process_heavy,
    "silicon-incomplete": silicon.silicon_incomplete,
    "smc-data-types": smc.smc_data_types,
}

# Counters that start again because the story says so: (at, counter's owner).
RESETS = {
    "network-busy": {(480, "en0"), (540, "utun3")},
    "process-heavy": {(120, 1105)},
}


def watts(state):
    registry = state["registry"]
    return registry["Voltage"] * registry["Amperage"] / 1e6


def percents(all_states):
    return [
        state["registry"]["CurrentCapacity"] for _, _, state, _ in all_states if state["registry"]
    ]


def story_problems(name, machine):
    """What must be seen in the file for its name to be true."""
    seen = list(states(machine))
    all_states = [state for _, _, state, _ in seen]
    registries = [state["registry"] for state in all_states if state["registry"]]
    suspended = sum(frame.get("suspended", 0) for frame in machine["frames"])
    silicon = [silicon_watts(state["energyChannels"]) for state in all_states]
    plugged = [registry["ExternalConnected"] for registry in registries]
    facts = []

    def says(holds, fact):
        if not holds:
            facts.append(f"the story does not hold: {fact}")

    if name == "laptop-unplugged":
        says(
            not any(plugged) and all(-8 < watts(state) < -4 for state in all_states),
            "idle on battery",
        )
    elif name == "laptop-heavy-load":
        says(
            min(map(watts, all_states)) < -35 and max(s[0][0] for s in silicon) > 25, "a heavy load"
        )
    elif name == "laptop-charging":
        levels = percents(seen)
        says(levels[0] == 20 and levels[-1] == 100 and levels == sorted(levels), "from 20 to 100 %")
        tail = [
            registry["Amperage"]
            for registry in registries
            if 80 < registry["CurrentCapacity"] < 100
        ]
        says(tail == sorted(tail, reverse=True) and tail[0] > 3 * tail[-1], "a taper above 80 %")
    elif name == "laptop-draining-on-ac":
        draining = [
            state
            for state in all_states
            if state["registry"]["ExternalConnected"] and watts(state) < -1
        ]
        says(all(plugged) and len(draining) > 10, "draining on the adapter")
        says(
            any(state["registry"]["IsCharging"] for state in draining),
            "a charging flag against the current",
        )
        says(watts(all_states[-1]) > 5, "charging in the end")
    elif name == "laptop-full-on-ac":
        says(all(registry["FullyCharged"] for registry in registries), "full")
    elif name == "laptop-lid-closed":
        says(suspended == 3600, "an hour closed")
    elif name == "day-of-work":
        levels = percents(seen)
        says(
            machine["duration"] == 86400
            and levels[0] == 100
            and levels[-1] == 100
            and 5 <= min(levels) < 30,
            "a day",
        )
        says(
            suspended > 8 * 3600 and any(plugged) and not all(plugged),
            "closed, unplugged and charged",
        )
    elif name == "laptop-hot":
        worst = max(range(len(seen)), key=lambda place: all_states[place]["thermal"]["pressure"])
        says(
            all_states[worst]["thermal"]["state"] == 3
            and silicon[worst][0][0] < 0.6 * silicon[0][0][0],
            "throttled when critical",
        )
        says(all_states[-1]["thermal"]["state"] == 0, "cool in the end")
    elif name == "no-energy-library":
        says(not any(silicon), "no silicon power")
    elif name == "silicon-incomplete":
        says(
            None in silicon and silicon[-1][1] and sum(1 for s in silicon if s and not s[1]) >= 3,
            "incomplete channels",
        )
    elif name == "desktop-fans":
        speeds = {state["smc"]["F0Ac"]["bytes"] for state in all_states}
        says(not registries and len(speeds) > 5, "no battery and fans that move")
    elif name == "laptop-fanless-hid":
        says(
            not any(key[0] in "TF" for state in all_states for key in state["smc"]),
            "no SMC temperature or fan",
        )
    return facts


def problems_of(name, machine):
    problems = Physics(machine, RESETS.get(name, ())).run() + story_problems(name, machine)
    if name != "smc-data-types":
        problems += ordinary_sensors(machine)
    if machine.get("pace") == "instant" and machine.get("atEnd") != "interrupt":
        problems.append('an "instant" machine must end: atEnd "interrupt" is missing')
    if machine["duration"] < machine["frames"][-1]["at"]:
        problems.append("frames after the end are never reached")
    if "startedAt" not in machine:
        problems.append("without startedAt no two runs are alike")
    return problems
