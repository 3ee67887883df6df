#pragma once

/**
 * Makes the lines that ALSA's library writes to standard error lines of `quillmere.video`, where the player's library has
 * brought it in. Once, before anything plays; any thread.
 */
void logAlsaWords();
