-- Outputs start at full volume, because the television has its own volume control. For WirePlumber 0.4 (Debian 12).
device_defaults.properties["default-volume"] = 1.0
