-- For WirePlumber 0.4: the hardware of whoever runs this is left alone.
bluez_monitor.enabled = false
