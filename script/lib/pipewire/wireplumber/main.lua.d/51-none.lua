-- For WirePlumber 0.4: the hardware of whoever runs this is left alone.
alsa_monitor.enabled = false
v4l2_monitor.enabled = false
libcamera_monitor.enabled = false
