"""The text of a machine file: a line per top-level key, frame key and row of a long list."""

import json

LONG = 160


def compact(value):
    return json.dumps(value, ensure_ascii=False, allow_nan=False)


def rows(value, indent):
    """A value on one line if it is short or a plain dictionary, else one line per element."""
    text = compact(value)
    if len(text) <= LONG:
        return text
    if isinstance(value, list) and len(value) > 1:
        return "[\n" + ",\n".join(indent + compact(row) for row in value) + "]"
    if isinstance(value, dict) and "replies" in value:
        head = {key: part for key, part in value.items() if key != "replies"}
        replies = ",\n".join(
            f"{indent}{compact(word)}: {compact(given)}" for word, given in value["replies"].items()
        )
        return compact(head)[:-1] + ', "replies": {\n' + replies + "}}"
    return text


def document(machine):
    lines = [
        f" {compact(key)}: {compact(value)}," for key, value in machine.items() if key != "frames"
    ]
    frames = []
    for frame in machine["frames"]:
        keys = [f"{compact(key)}: {rows(value, '     ')}" for key, value in frame.items()]
        frames.append("  {" + ",\n   ".join(keys) + "}")
    return "{\n" + "\n".join(lines) + '\n "frames": [\n' + ",\n".join(frames) + "]}\n"
