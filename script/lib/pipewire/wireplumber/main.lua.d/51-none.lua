-- For WirePlumber 0.4: leaves the user's hardware alone.
alsa_monitor.enabled = false
v4l2_monitor.enabled = false
libcamera_monitor.enabled = false
