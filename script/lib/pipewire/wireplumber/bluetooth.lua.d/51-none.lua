-- For WirePlumber 0.4: leaves the user's hardware alone.
bluez_monitor.enabled = false
