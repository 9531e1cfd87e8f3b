#!/usr/bin/env bash
# A Slurm cluster of this machine alone, without systemd: for trying out job scripts.
#   tools/slurm-node.sh COMMAND...      runs a command in it, then ends the cluster
# The command finds sbatch, squeue and the others working. Needs root and the packages
# slurm-wlm and munge; ports are free ones, so that a real cluster is left alone.
set -euo pipefail

[ $# -gt 0 ] || { sed -n '2,5s/^# //p' "$0" >&2; exit 2; }
[ "$(id -u)" -eq 0 ] || { echo "slurm-node: the daemons need root" >&2; exit 1; }
for program in munged slurmctld slurmd sbatch; do
  command -v $program >/dev/null || { echo "slurm-node: $program is not installed" >&2; exit 1; }
done

home=$(mktemp -d)
pids=()
cleanup() {
  status=$?
  for ((i = ${#pids[@]} - 1; i >= 0; i--)); do
    kill "${pids[i]}" 2>/dev/null || true
    wait "${pids[i]}" 2>/dev/null || true
  done
  [ $status -eq 0 ] || tail -n 5 "$home"/*.log >&2
  rm -rf "$home"
}
trap cleanup EXIT
chmod 755 "$home"

# munge wants folders that nobody else can write to, and no root.
install -d -o munge -g munge -m 755 "$home/munge"
(umask 077; head -c 1024 /dev/urandom >"$home/munge/key")
chown munge: "$home/munge/key"
runuser -u munge -- munged --foreground --key-file="$home/munge/key" \
  --socket="$home/munge/socket" --pid-file="$home/munge/pid" --log-file="$home/munge/log" \
  --seed-file="$home/munge/seed" >"$home/munged.log" 2>&1 &
pids+=($!)

free_port() {
  python3 -c 'import socket; s = socket.socket(); s.bind(("", 0)); print(s.getsockname()[1])'
}
node=$(hostname -s)
cpus=$(nproc)
mkdir "$home/state" "$home/spool"
cat >"$home/slurm.conf" <<CONF
ClusterName=onenode
SlurmctldHost=$node(127.0.0.1)
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$home/munge/socket
CredType=cred/munge
SlurmctldPort=$(free_port)
SlurmdPort=$(free_port)
SlurmctldPidFile=$home/slurmctld.pid
SlurmdPidFile=$home/slurmd.pid
StateSaveLocation=$home/state
SlurmdSpoolDir=$home/spool
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
MpiDefault=none
SwitchType=switch/none
ReturnToService=2
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
# A node of two processors waits long by default.
SchedulerParameters=batch_sched_delay=1,sched_interval=1,sched_min_interval=0,bf_interval=1
NodeName=$node NodeAddr=127.0.0.1 CPUs=$cpus State=UNKNOWN
PartitionName=all Nodes=$node Default=YES MaxTime=INFINITE State=UP
CONF
export SLURM_CONF=$home/slurm.conf

slurmctld -D >"$home/slurmctld.log" 2>&1 &
pids+=($!)
slurmd -D -N "$node" >"$home/slurmd.log" 2>&1 &
pids+=($!)

for ((i = 0; i < 300; i++)); do
  state=$(sinfo -h -o %T 2>/dev/null || true)
  [ "$state" = idle ] && break
  sleep 0.2
done
[ "$state" = idle ] || { echo "slurm-node: the node is '$state', not idle" >&2; exit 1; }

"$@"
