alias ll="ls -l"
