#!/usr/bin/python3
"""tasks.py list|disable: looks at the default task list of the bus's Evolution Data Server as any other
program would. `list` prints what is in it as JSON, `disable` switches it off."""
import json
import sys

import gi

gi.require_version("EDataServer", "1.2")
gi.require_version("ECal", "2.0")
from gi.repository import ECal, EDataServer  # noqa: E402

NO_WAIT = 0xFFFFFFFF


def time_of(due):
    if due is None or due.is_null_time():
        return None
    zone = due.get_timezone()
    return {"text": due.as_ical_string(), "zone": zone.get_tzid() if zone else None, "utc": bool(due.is_utc())}


def tasks(source):
    client = ECal.Client.connect_sync(source, ECal.ClientSourceType.TASKS, NO_WAIT, None)
    _, components = client.get_object_list_sync("#t", None)
    return [{"title": component.get_summary(), "notes": component.get_description(), "uid": component.get_uid(),
             "due": time_of(component.get_due())} for component in components]


def main():
    registry = EDataServer.SourceRegistry.new_sync(None)
    source = registry.ref_default_task_list()
    if sys.argv[1] == "list":
        print(json.dumps(tasks(source)))
    elif sys.argv[1] == "disable":
        source.set_enabled(False)
        registry.commit_source_sync(source, None)
    else:
        sys.exit(__doc__)


main()
