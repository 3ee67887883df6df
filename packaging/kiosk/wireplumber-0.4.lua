-- A television has its own volume: the outputs of the machine begin at the full one. For WirePlumber 0.4 (Debian 12).
device_defaults.properties["default-volume"] = 1.0
