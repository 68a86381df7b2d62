"""A private desktop for one program: X server, window manager, compositor, tray, buses, scripted hardware.

`session.Session` is what a test starts from; the other modules are its parts. Nothing here touches the session of
whoever runs it, and everything that it starts is ended by process id."""
