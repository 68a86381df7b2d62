"""A private sound server with outputs that nobody hears, and the mixer's hand on it."""

import subprocess

from .processes import Child, wait_until


class SoundServer:
    """Programs that are started in `environment` afterwards find this one."""

    def __init__(self, folder, environment):
        self._folder, self._environment = folder, environment
        self._socket = folder / "sound"
        environment["PULSE_SERVER"] = f"unix:{self._socket}"
        self._server = None
        self._modules = {}

    def start(self, *outputs):
        """The first of the outputs is the default one; all are at 50 %."""
        self._server = Child(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
             "-L", f"module-native-protocol-unix auth-anonymous=1 socket={self._socket}"],
            self._environment, self._folder / "pulseaudio.log")
        wait_until(lambda: self._mixer("info", needed=False), "the sound server")
        for output in outputs:
            self._modules[output] = self._mixer("load-module", "module-null-sink", f"sink_name={output}")
            self.set_volume("50%", output)
        if outputs:
            self.make_default(outputs[0])

    def stop(self):
        if self._server:
            self._server.end()
            self._server = None
            self._socket.unlink(missing_ok=True)

    end = stop

    def set_volume(self, volume, output="@DEFAULT_SINK@"):
        """As `pactl` takes it: "33%", or a whole number of 65536."""
        self._mixer("set-sink-volume", output, volume)

    def mute(self, muted, output="@DEFAULT_SINK@"):
        self._mixer("set-sink-mute", output, int(muted))

    def make_default(self, output):
        self._mixer("set-default-sink", output)

    def remove(self, output):
        self._mixer("unload-module", self._modules.pop(output))

    def has_client(self, name):
        return f'application.name = "{name}"' in self._mixer("list", "clients")

    def _mixer(self, *arguments, needed=True):
        answer = subprocess.run(["pactl", *map(str, arguments)], env=self._environment, capture_output=True, text=True,
                                check=needed)
        return answer.stdout.strip()
