# Completes the commands of lumora in fish; the habits and chores are those of the running program.

function __lumora_first
    test (count (commandline -opc)) -eq 1
end

function __lumora_in
    set -l words (commandline -opc)
    test (count $words) -ge 2; and test $words[2] = $argv[1]
end

function __lumora_alone_in
    __lumora_in $argv[1]; and test (count (commandline -opc)) -eq 2
end

complete -c lumora -f
complete -c lumora -n __lumora_first -a status -d 'Print the label'
complete -c lumora -n __lumora_first -a agenda -d 'Print what is left of the day'
complete -c lumora -n __lumora_first -a join -d 'Open the link of the meeting'
complete -c lumora -n __lumora_first -a capture -d 'Put a thought into the inbox'
complete -c lumora -n __lumora_first -a habit -d 'Toggle a habit'
complete -c lumora -n __lumora_first -a chore -d 'Mark a chore done'
complete -c lumora -n __lumora_first -a toggle -d 'Open the panel, or close it'
complete -c lumora -n __lumora_first -a show -d 'Open the panel'
complete -c lumora -n __lumora_first -a hide -d 'Close the panel'
complete -c lumora -n __lumora_first -a settings -d 'Open the settings'
complete -c lumora -n __lumora_first -a refresh -d 'Fetch the briefing now'
complete -c lumora -n __lumora_first -a quit -d 'End the running program'
complete -c lumora -n __lumora_first -a check -d 'Read a briefing'
complete -c lumora -n __lumora_first -a doctor -d 'Say what is wrong, and what helps'
complete -c lumora -n __lumora_first -l demo -d 'Show an invented day'
complete -c lumora -n __lumora_first -l help -d 'Print the usage'
complete -c lumora -n __lumora_first -l version -d 'Print the version'
complete -c lumora -n '__lumora_in status' -l follow -d 'Print it again whenever it changes'
complete -c lumora -n '__lumora_in status' -l format -x \
    -a 'text json waybar polybar i3blocks i3status-rust' -d 'For whom'
complete -c lumora -n '__lumora_in agenda' -l format -x -a 'text json' -d 'For whom'
complete -c lumora -n '__lumora_alone_in habit' -l list -d 'Print the habits'
complete -c lumora -n '__lumora_alone_in habit' -a '(lumora habit --list 2>/dev/null)'
complete -c lumora -n '__lumora_alone_in chore' -l list -d 'Print the chores'
complete -c lumora -n '__lumora_alone_in chore' -a '(lumora chore --list 2>/dev/null)'
complete -c lumora -n '__lumora_in --demo' -l scenario -x \
    -a 'busy empty quiet unauthorized flaky slow malformed html' -d 'Which day'
complete -c lumora -n '__lumora_in check' -F
complete -c lumora -n '__lumora_in check' -l now -x -d 'By another time'
complete -c lumora -n '__lumora_in doctor' -l json -d 'For bug reports'
