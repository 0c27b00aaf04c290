namespace quorvex {}
