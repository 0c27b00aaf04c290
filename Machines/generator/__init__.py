"""The machines that ship with Quorvex: how they are made and what is checked about them."""
